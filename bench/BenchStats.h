#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTextStream>

#include <algorithm>
#include <vector>

// Medians and percentiles of repeated measurements, in milliseconds.
struct BenchSamples {
    std::vector<double> ms;

    void Add(double value) { ms.push_back(value); }
    double Percentile(double p) const {
        if (ms.empty())
            return 0;
        std::vector<double> sorted = ms;
        std::sort(sorted.begin(), sorted.end());
        const double rank = p * (static_cast<double>(sorted.size()) - 1);
        const auto low = static_cast<size_t>(rank);
        const size_t high = std::min(low + 1, sorted.size() - 1);
        return sorted[low] + (sorted[high] - sorted[low]) * (rank - static_cast<double>(low));
    }
    double Median() const { return Percentile(0.5); }
    double P95() const { return Percentile(0.95); }
};

// Runs body `runs` times and returns the elapsed milliseconds of each run.
template <typename Body> BenchSamples Measure(int runs, Body&& body) {
    BenchSamples samples;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        body();
        samples.Add(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    return samples;
}

inline QTextStream& Out() {
    static QTextStream out(stdout);
    return out;
}

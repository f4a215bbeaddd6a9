#pragma once

#include <QString>
#include <QTextStream>

#include <algorithm>
#include <ctime>
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

// What Measure counts: wall-clock time (the default), or with KORVANE_BENCH_CPU=1
// the CPU time of the measuring thread, which other programs on a busy
// machine hardly change (SQLite runs in this thread; a server's time is not
// counted).
inline bool MeasuringCpu() {
    static const bool cpu = qEnvironmentVariableIntValue("KORVANE_BENCH_CPU") != 0;
    return cpu;
}

inline double NowMs() {
    timespec now{};
    clock_gettime(MeasuringCpu() ? CLOCK_THREAD_CPUTIME_ID : CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// Runs body `runs` times and returns the milliseconds of each run.
template <typename Body> BenchSamples Measure(int runs, Body&& body) {
    BenchSamples samples;
    for (int i = 0; i < runs; ++i) {
        const double start = NowMs();
        body();
        samples.Add(NowMs() - start);
    }
    return samples;
}

inline QTextStream& Out() {
    static QTextStream out(stdout);
    return out;
}

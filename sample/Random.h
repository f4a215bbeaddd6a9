#pragma once

#include <QtGlobal>

#include <cstddef>
#include <iterator>

// A small deterministic generator (splitmix64). The standard distributions
// differ between library implementations, so ranges are computed here: the
// same seed gives the same estate on every platform.
class TRandom {
public:
    explicit TRandom(quint64 seed) : FState(seed) {}

    // An independent stream for one part of the estate, so that adding
    // content to one part does not shift the numbers of another.
    static TRandom Stream(quint32 seed, quint64 stream) {
        TRandom mixer(quint64(seed) * 0x9E3779B97F4A7C15ull ^ (stream + 0x632BE59BD9B4E019ull));
        return TRandom(mixer.Next());
    }

    quint64 Next() {
        quint64 z = (FState += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    // Uniform in [low, high].
    int Range(int low, int high) { return low + int(Next() % quint64(high - low + 1)); }

    bool Chance(int percent) { return Range(0, 99) < percent; }

    template <typename Container> const auto& Pick(const Container& items) {
        return items[std::size_t(Range(0, int(std::size(items)) - 1))];
    }

private:
    quint64 FState;
};

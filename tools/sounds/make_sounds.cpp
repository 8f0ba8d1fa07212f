// Synthesises the launcher's five sound cues and writes them as 16-bit mono PCM WAV files:
//
//   ks4a.wav    the start sound of the splash and the exit, a rising bell arpeggio over a soft drone
//   rail.wav    the flags dialog button, a falling "zing"
//   bfg.wav     the weapons dialog button, a charging hum that ends in a soft thump
//   tab.wav     a tab change, a short wooden tick
//   button.wav  a dialog's Close button, a two-note chime
//
// Usage: ks_make_sounds OUTDIR
//
// The output is the same byte for byte on every run: the only randomness is a fixed-seed generator of our own.

#include "frame/sound_cues.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kSampleRate = 22050;
// Highest sample after normalising: about -1.4 dBFS, well clear of full scale.
constexpr double kPeak = 0.85;
constexpr double kTwoPi = 2.0 * std::numbers::pi;

using Signal = std::vector<double>;

Signal silence(double seconds) { return Signal(static_cast<std::size_t>(std::lround(seconds * kSampleRate)), 0.0); }

double timeOf(std::size_t index) { return static_cast<double>(index) / kSampleRate; }

// 0 at t = 0, 1 from t = length on, with a smooth half cosine between.
double rise(double t, double length) {
    if (t <= 0) return 0;
    if (t >= length) return 1;
    return 0.5 - 0.5 * std::cos(std::numbers::pi * t / length);
}

// A struck tone: a quick rise, then an exponential decay with time constant tau.
double strike(double t, double attack, double tau) { return t < 0 ? 0 : rise(t, attack) * std::exp(-t / tau); }

// Noise in [-1, 1] from a 32-bit xorshift generator with a fixed seed.
class Noise {
public:
    double next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return static_cast<double>(state_) / 2147483647.5 - 1.0;
    }

private:
    std::uint32_t state_ = 0x4b53u; // "KS"
};

// A bell-like note of mostly harmonic partials; the higher partials die away sooner.
void addBell(Signal& signal, double start, double frequency, double amplitude, double tau) {
    struct Partial {
        double ratio;
        double level;
        double decay;
    };
    static constexpr Partial kPartials[] = {{1.0, 1.0, 1.0}, {2.0, 0.32, 0.55}, {3.0, 0.10, 0.35}, {4.07, 0.04, 0.2}};
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double t = timeOf(i) - start;
        if (t < 0) continue;
        double sample = 0;
        for (const Partial& partial : kPartials)
            sample += partial.level * std::sin(kTwoPi * frequency * partial.ratio * t) *
                      strike(t, 0.004, tau * partial.decay);
        signal[i] += amplitude * sample;
    }
}

// A one-pole low-pass filter, run in place; cutoff in hertz.
void lowPass(Signal& signal, double cutoff) {
    const double a = 1.0 - std::exp(-kTwoPi * cutoff / kSampleRate);
    double state = 0;
    for (double& sample : signal) {
        state += a * (sample - state);
        sample = state;
    }
}

// A tone whose frequency follows frequencyAt(t); the phase is summed so the sweep has no jumps.
void addSweep(Signal& signal, double start, const std::function<double(double)>& frequencyAt,
              const std::function<double(double)>& levelAt) {
    double phase = 0;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double t = timeOf(i) - start;
        if (t < 0) continue;
        signal[i] += levelAt(t) * std::sin(phase);
        phase = std::fmod(phase + kTwoPi * frequencyAt(t) / kSampleRate, kTwoPi);
    }
}

// The start sound: an A major arpeggio of bells over a low, slightly detuned drone.
Signal startSound() {
    Signal signal = silence(2.6);
    addSweep(
        signal, 0, [](double) { return 110.0; }, [](double t) { return 0.22 * rise(t, 0.45) * std::exp(-t / 1.1); });
    addSweep(
        signal, 0, [](double) { return 110.7; }, [](double t) { return 0.16 * rise(t, 0.55) * std::exp(-t / 1.0); });
    addSweep(
        signal, 0, [](double) { return 164.8; }, [](double t) { return 0.10 * rise(t, 0.6) * std::exp(-t / 0.9); });
    const double notes[] = {440.0, 554.37, 659.26, 880.0};
    for (std::size_t n = 0; n < std::size(notes); ++n)
        addBell(signal, 0.05 + 0.17 * static_cast<double>(n), notes[n], n + 1 == std::size(notes) ? 0.5 : 0.38,
                n + 1 == std::size(notes) ? 0.75 : 0.5);
    return signal;
}

// The flags button: a bright tone falling from 2.8 kHz, a fainter one a twelfth above, and a breath of noise.
Signal railSound() {
    Signal signal = silence(0.7);
    const auto fall = [](double from, double to) {
        return [from, to](double t) { return to + (from - to) * std::exp(-t / 0.09); };
    };
    addSweep(signal, 0, fall(2800.0, 420.0), [](double t) { return 0.6 * strike(t, 0.003, 0.16); });
    addSweep(signal, 0, fall(8400.0, 1260.0), [](double t) { return 0.08 * strike(t, 0.003, 0.07); });
    // A low ring that stays a little longer, the "hum" of the coil.
    addSweep(
        signal, 0.01, [](double t) { return 220.0 + 6.0 * std::sin(kTwoPi * 9.0 * t); },
        [](double t) { return 0.25 * strike(t, 0.02, 0.22); });
    Signal breath(signal.size());
    Noise noise;
    for (std::size_t i = 0; i < breath.size(); ++i)
        breath[i] = noise.next() * strike(timeOf(i), 0.002, 0.03);
    lowPass(breath, 3000.0);
    for (std::size_t i = 0; i < signal.size(); ++i)
        signal[i] += 0.35 * breath[i];
    return signal;
}

// How long the weapons button's hum rises before the thump.
constexpr double kCharge = 0.8;

// The weapons button: a hum that swells and rises for 0.8 s, softened by a gentle saturation, then a low thump.
Signal bfgSound() {
    Signal signal = silence(1.3);
    Signal hum = silence(kCharge + 0.15);
    addSweep(
        hum, 0,
        [](double t) {
            return 90.0 * std::pow(4.0, std::min(t, kCharge) / kCharge) * (1.0 + 0.02 * std::sin(kTwoPi * 7.0 * t));
        },
        [](double t) { return rise(t, kCharge) * (1.0 - rise(t - kCharge, 0.12)); });
    for (std::size_t i = 0; i < hum.size(); ++i)
        signal[i] += 0.45 * std::tanh(2.0 * hum[i]);

    // The thump: a sine that drops from 88 to 48 Hz, and a short burst of dark noise.
    addSweep(
        signal, kCharge, [](double t) { return 48.0 + 40.0 * std::exp(-t / 0.08); },
        [](double t) { return 0.9 * strike(t, 0.006, 0.16); });
    Signal burst(signal.size());
    Noise noise;
    for (std::size_t i = 0; i < burst.size(); ++i)
        burst[i] = noise.next() * strike(timeOf(i) - kCharge, 0.004, 0.08);
    lowPass(burst, 600.0);
    lowPass(burst, 600.0);
    for (std::size_t i = 0; i < signal.size(); ++i)
        signal[i] += 0.9 * burst[i];
    return signal;
}

// A tab change: a short wooden tick of two partials.
Signal tabSound() {
    Signal signal = silence(0.1);
    addSweep(
        signal, 0, [](double) { return 1180.0; }, [](double t) { return strike(t, 0.0015, 0.014); });
    addSweep(
        signal, 0, [](double) { return 2950.0; }, [](double t) { return 0.3 * strike(t, 0.0015, 0.006); });
    return signal;
}

// A Close button: two quick bell notes, G then C, a fourth apart.
Signal buttonSound() {
    Signal signal = silence(0.3);
    addBell(signal, 0.0, 783.99, 0.7, 0.05);
    addBell(signal, 0.065, 1046.5, 0.8, 0.07);
    return signal;
}

// Takes out any DC offset, fades both ends to silence and scales the peak to kPeak. The offset is taken out in
// the shape of the fade window, so the ends stay exactly at zero and the mean is zero.
void finish(Signal& signal) {
    const double length = static_cast<double>(signal.size()) / kSampleRate;
    const double fadeIn = std::min(0.003, length / 10);
    const double fadeOut = std::min(0.3, length / 8);
    Signal window(signal.size());
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double t = timeOf(i);
        // The last sample lies at length - 1/rate; the window is zero there.
        const double left = length - 1.0 / kSampleRate - t;
        window[i] = rise(t, fadeIn) * rise(left, fadeOut);
    }
    double sum = 0;
    double windowSum = 0;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        signal[i] *= window[i];
        sum += signal[i];
        windowSum += window[i];
    }
    for (std::size_t i = 0; i < signal.size(); ++i)
        signal[i] -= sum * window[i] / windowSum;

    double peak = 0;
    for (double sample : signal)
        peak = std::max(peak, std::abs(sample));
    if (peak > 0)
        for (double& sample : signal)
            sample *= kPeak / peak;
}

void putLittleEndian(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xffu));
}

bool writeWav(const std::filesystem::path& path, const Signal& signal) {
    constexpr int kBytesPerSample = 2;
    const auto dataSize = static_cast<std::uint32_t>(signal.size() * kBytesPerSample);
    std::string bytes;
    bytes.reserve(44 + dataSize);
    bytes += "RIFF";
    putLittleEndian(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    putLittleEndian(bytes, 16, 4);                            // size of the format chunk
    putLittleEndian(bytes, 1, 2);                             // PCM
    putLittleEndian(bytes, 1, 2);                             // mono
    putLittleEndian(bytes, kSampleRate, 4);                   // samples per second
    putLittleEndian(bytes, kSampleRate * kBytesPerSample, 4); // bytes per second
    putLittleEndian(bytes, kBytesPerSample, 2);               // bytes per frame
    putLittleEndian(bytes, 8 * kBytesPerSample, 2);           // bits per sample
    bytes += "data";
    putLittleEndian(bytes, dataSize, 4);
    for (double sample : signal) {
        const long value = std::clamp(std::lround(sample * 32767.0), -32767L, 32767L);
        putLittleEndian(bytes, static_cast<std::uint32_t>(static_cast<std::int16_t>(value)) & 0xffffu, 2);
    }
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return static_cast<bool>(out);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: ks_make_sounds OUTDIR\n", stderr);
        return 2;
    }
    const std::filesystem::path directory = argv[1];
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        std::fprintf(stderr, "ks_make_sounds: cannot create %s: %s\n", argv[1], error.message().c_str());
        return 1;
    }
    struct Cue {
        std::string_view file;
        Signal (*make)();
    };
    constexpr Cue kCues[] = {{ks::kStartSound, startSound},
                             {ks::kFlagsButtonSound, railSound},
                             {ks::kWeaponsButtonSound, bfgSound},
                             {ks::kTabSound, tabSound},
                             {ks::kCloseButtonSound, buttonSound}};
    for (const Cue& cue : kCues) {
        Signal signal = cue.make();
        finish(signal);
        const std::filesystem::path path = directory / cue.file;
        if (!writeWav(path, signal)) {
            std::fprintf(stderr, "ks_make_sounds: cannot write %s\n", path.string().c_str());
            return 1;
        }
    }
    return 0;
}

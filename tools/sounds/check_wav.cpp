// Checks that sound cues keep what the launcher promises of them:
//
//   - RIFF/WAVE with a PCM format chunk: 16 bits, one channel, 22050 or 44100 samples per second;
//   - a data chunk that is whole and lasts more than 0 and less than the given number of seconds;
//   - no sample at full scale (32767 or -32768), the peak at most -1 dBFS;
//   - no click at either end (the first and last samples are near silence) and no DC offset.
//
// Usage: ks_check_wav --max-seconds S FILE...
//
// Prints one line per file with its length and peak. Exits 0 when every file passes, 1 when one does not,
// 2 on a usage error.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kFullScale = 32768;
// -1 dBFS.
const int kHighestPeak = static_cast<int>(kFullScale * std::pow(10.0, -1.0 / 20.0));
// About -54 dBFS: a first or last sample above this would be heard as a click.
constexpr int kQuietEnd = 64;
// Half a percent of full scale.
constexpr double kHighestMean = 0.005 * kFullScale;

std::uint32_t readLittleEndian(const std::string& bytes, std::size_t at, int size) {
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = (value << 8) | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return value;
}

struct Sound {
    std::uint32_t sampleRate = 0;
    std::vector<std::int16_t> samples;
};

// The sound in a WAV file, or nothing with the reason in `problem`.
std::optional<Sound> parseWav(const std::string& bytes, std::string& problem) {
    if (bytes.size() < 12 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0) {
        problem = "not a RIFF/WAVE file";
        return std::nullopt;
    }
    if (readLittleEndian(bytes, 4, 4) != bytes.size() - 8) {
        problem = "the RIFF size does not match the file size";
        return std::nullopt;
    }
    Sound sound;
    bool haveFormat = false;
    std::size_t at = 12;
    while (at + 8 <= bytes.size()) {
        const std::string id = bytes.substr(at, 4);
        const std::uint32_t size = readLittleEndian(bytes, at + 4, 4);
        const std::size_t body = at + 8;
        if (size > bytes.size() - body) {
            problem = "chunk \"" + id + "\" runs past the end of the file";
            return std::nullopt;
        }
        if (id == "fmt ") {
            if (size < 16) {
                problem = "format chunk too short";
                return std::nullopt;
            }
            const std::uint32_t format = readLittleEndian(bytes, body, 2);
            const std::uint32_t channels = readLittleEndian(bytes, body + 2, 2);
            sound.sampleRate = readLittleEndian(bytes, body + 4, 4);
            const std::uint32_t byteRate = readLittleEndian(bytes, body + 8, 4);
            const std::uint32_t blockAlign = readLittleEndian(bytes, body + 12, 2);
            const std::uint32_t bits = readLittleEndian(bytes, body + 14, 2);
            if (format != 1 || bits != 16 || channels != 1) {
                problem = "not 16-bit mono PCM (format " + std::to_string(format) + ", " + std::to_string(bits) +
                          " bits, " + std::to_string(channels) + " channels)";
                return std::nullopt;
            }
            if (sound.sampleRate != 22050 && sound.sampleRate != 44100) {
                problem = "sample rate " + std::to_string(sound.sampleRate) + " is neither 22050 nor 44100";
                return std::nullopt;
            }
            if (blockAlign != 2 || byteRate != sound.sampleRate * 2) {
                problem = "byte rate or block alignment does not fit 16-bit mono";
                return std::nullopt;
            }
            haveFormat = true;
        } else if (id == "data") {
            if (!haveFormat) {
                problem = "data chunk before the format chunk";
                return std::nullopt;
            }
            if (size % 2 != 0) {
                problem = "data chunk holds half a sample";
                return std::nullopt;
            }
            for (std::size_t i = 0; i < size; i += 2)
                sound.samples.push_back(static_cast<std::int16_t>(readLittleEndian(bytes, body + i, 2)));
            return sound;
        }
        at = body + size + size % 2; // chunks are padded to an even length
    }
    problem = haveFormat ? "no data chunk" : "no format chunk";
    return std::nullopt;
}

// Checks one file against the promises; prints its figures or its fault.
bool checkFile(const char* path, double maxSeconds) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::printf("%s: FAIL: cannot open\n", path);
        return false;
    }
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::string problem;
    const std::optional<Sound> sound = parseWav(bytes, problem);
    if (!sound) {
        std::printf("%s: FAIL: %s\n", path, problem.c_str());
        return false;
    }
    const std::vector<std::int16_t>& samples = sound->samples;
    const double seconds = static_cast<double>(samples.size()) / sound->sampleRate;
    int peak = 0;
    double sum = 0;
    bool fullScale = false;
    for (std::int16_t sample : samples) {
        peak = std::max(peak, std::abs(static_cast<int>(sample)));
        sum += sample;
        fullScale = fullScale || sample == 32767 || sample == -32768;
    }
    const double peakDb = peak > 0 ? 20.0 * std::log10(static_cast<double>(peak) / kFullScale) : -INFINITY;
    const double mean = samples.empty() ? 0.0 : sum / static_cast<double>(samples.size());
    std::printf("%s: %u Hz, %.3f s, peak %d (%.2f dBFS), mean %.2f\n", path, sound->sampleRate, seconds, peak, peakDb,
                mean);

    bool ok = true;
    const auto fail = [&](const std::string& why) {
        std::printf("%s: FAIL: %s\n", path, why.c_str());
        ok = false;
    };
    if (samples.empty()) fail("no samples");
    if (seconds >= maxSeconds) fail("lasts " + std::to_string(seconds) + " s, not under " + std::to_string(maxSeconds));
    if (fullScale) fail("a sample reaches full scale");
    if (peak > kHighestPeak) fail("peak above -1 dBFS");
    if (peak == 0 && !samples.empty()) fail("silent");
    if (!samples.empty() && (std::abs(samples.front()) > kQuietEnd || std::abs(samples.back()) > kQuietEnd))
        fail("starts or ends away from silence (a click)");
    if (std::abs(mean) > kHighestMean) fail("DC offset");
    return ok;
}

} // namespace

int main(int argc, char** argv) {
    double maxSeconds = 0;
    int first = 1;
    if (argc >= 3 && std::string_view(argv[1]) == "--max-seconds") {
        char* end = nullptr;
        maxSeconds = std::strtod(argv[2], &end);
        if (*end != '\0') maxSeconds = 0;
        first = 3;
    }
    if (maxSeconds <= 0 || first >= argc) {
        std::fputs("usage: ks_check_wav --max-seconds S FILE...\n", stderr);
        return 2;
    }
    bool ok = true;
    for (int i = first; i < argc; ++i)
        ok = checkFile(argv[i], maxSeconds) && ok;
    return ok ? 0 : 1;
}

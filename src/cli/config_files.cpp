#include "cli/config_files.h"

#include "config/atomic_file.h"
#include "rules/numbers.h"

#ifdef _WIN32
#include "frame/windows_paths.h"
#endif

namespace ks::cli {

std::filesystem::path filePath(const std::string& name) {
#ifdef _WIN32
    return std::filesystem::path(wideText(name));
#else
    return std::filesystem::path(name);
#endif
}

std::string pathText(const std::filesystem::path& path) {
#ifdef _WIN32
    return utf8Text(path.native());
#else
    return path.native();
#endif
}

std::vector<Finding> findingsIn(std::string_view bytes, std::ostream& err) {
    FreshProgram fresh(err, true), reloaded(err, true);
    return checkConfig(fresh.program, reloaded.program, bytes);
}

bool servedOtherwise(FindingKind kind) {
    return kind == FindingKind::NotNumber || kind == FindingKind::OpenQuote || kind == FindingKind::Password;
}

void warn(const std::string& file, const Finding& finding, std::ostream& err) {
    err << "warning: " << file << ':' << finding.line << ": " << finding.message << '\n';
}

std::optional<std::chrono::milliseconds> secondsValue(const Invocation& call, std::string_view option,
                                                      std::chrono::milliseconds fallback, std::ostream& err) {
    const std::optional<std::string> seconds = call.value(option);
    if (!seconds) return fallback;
    if (!isPlainNumber(*seconds) || std::stod(*seconds) > 86400) {
        badUse(*call.command,
               std::string(call.command->name) + ": " + std::string(option) +
                   " takes a number of seconds up to a day, not " + *seconds,
               err);
        return std::nullopt;
    }
    return std::chrono::milliseconds(static_cast<long long>(std::stod(*seconds) * 1000));
}

std::optional<std::chrono::milliseconds> lockWait(const Invocation& call, std::ostream& err) {
    return secondsValue(call, "--wait", kLockWait, err);
}

int sayBusy(const std::string& file, std::chrono::milliseconds wait, std::ostream& err) {
    err << "kscfg: " << file << " is being changed by another kscfg, which did not finish within "
        << plainDecimal(static_cast<double>(wait.count()) / 1000) << " s; nothing was written (--wait waits longer)\n";
    return kBusy;
}

int writeOrSay(const std::string& file, std::string_view bytes, std::ostream& err) {
    const OperationResult result = replaceFileAtomically(file, bytes);
    if (result.ok) return kDone;
    err << "kscfg: cannot write " << file << ": " << result.error << '\n';
    return kFailed;
}

int writeAndTell(const std::string& file, std::string_view bytes, bool quiet, std::ostream& err) {
    const int status = writeOrSay(file, bytes, err);
    if (status == kDone && !quiet)
        for (const Finding& finding : findingsIn(bytes, err))
            if (servedOtherwise(finding.kind)) warn(file, finding, err);
    return status;
}

} // namespace ks::cli

// The console platform on Windows: drive letters, paths in UTF-16 and in the long form for the system calls.

#include "cli/console_platform.h"

#include "frame/file_tests.h"
#include "frame/windows_paths.h"

#include <windows.h>

#include <shellapi.h>

namespace ks {

namespace {

DWORD attributesOf(const std::string& path) {
    const std::wstring name = systemPath(path);
    return name.empty() || isDevicePath(name) ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(name.c_str());
}

// The text a call of the kind "fill this buffer, or tell the size it needs" gives, as UTF-8.
template <typename Call> std::string askedText(Call call) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = call(text.data(), static_cast<DWORD>(text.size()));
        if (length == 0) return {};
        if (length < text.size()) return utf8Text(shortForm(std::wstring_view(text.data(), length)));
        text.resize(text.size() < length ? length : 2 * text.size());
    }
}

} // namespace

std::string ConsolePlatform::programPath() {
    return askedText([](wchar_t* buffer, DWORD size) {
        const DWORD length = GetModuleFileNameW(nullptr, buffer, size);
        return length == size ? size + 1 : length; // a cut name asks for more room
    });
}

OperationResult ConsolePlatform::changeDirectory(const std::string& path) {
    if (!file_tests::isDirectory(path)) {
        const DWORD attributes = attributesOf(path);
        return OperationResult::failure(attributes == INVALID_FILE_ATTRIBUTES ? reasonOfWindowsError(GetLastError())
                                                                              : "Not a directory");
    }
    if (!SetCurrentDirectoryW(shortForm(systemPath(path)).c_str()))
        return OperationResult::failure(reasonOfWindowsError(GetLastError()));
    return OperationResult::success();
}

std::string ConsolePlatform::currentDirectory() {
    return askedText([](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); });
}

OperationResult ConsolePlatform::openLink(const std::string& target) {
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(nullptr, L"open", wideText(target).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    if (result <= 32) return OperationResult::failure("no program opens " + target);
    return OperationResult::success();
}

std::vector<std::string> ConsolePlatform::drives() {
    std::vector<std::string> roots;
    wchar_t list[4 * 26 + 1] = {};
    const DWORD length = GetLogicalDriveStringsW(sizeof list / sizeof *list, list);
    for (const wchar_t* root = list; length > 0 && *root; root += wcslen(root) + 1)
        roots.push_back(utf8Text(root));
    return roots;
}

bool ConsolePlatform::driveReady(const std::string& drive) {
    // A drive without its medium answers at once instead of asking the operator for a disk.
    DWORD oldMode = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, &oldMode);
    std::wstring root = wideText(drive.substr(0, 2)) + L"\\";
    const bool ready = GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0);
    SetThreadErrorMode(oldMode, nullptr);
    return ready;
}

std::string ConsolePlatform::driveCurrentDirectory(const std::string& drive) {
    // Windows keeps a current directory for each drive; "D:" alone names it.
    const std::wstring letter = wideText(drive.substr(0, 2));
    return askedText(
        [&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(letter.c_str(), size, buffer, nullptr); });
}

std::string ConsolePlatform::homeDirectory() {
    return askedText([](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(L"USERPROFILE", buffer, size); });
}

} // namespace ks

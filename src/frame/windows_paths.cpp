#include "frame/windows_paths.h"

#include <cerrno>
#include <system_error>

#include <windows.h>

namespace ks {

std::wstring wideText(std::string_view utf8) {
    if (utf8.empty()) return {};
    const int size = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), length);
    return wide;
}

std::string utf8Text(std::wstring_view wide) {
    if (wide.empty()) return {};
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

bool isDevicePath(std::wstring_view path) { return path.starts_with(L"\\\\.\\"); }

std::wstring systemPath(std::string_view utf8) {
    const std::wstring given = wideText(utf8);
    // A path in the long form is taken as it stands: the system does not rework it.
    if (given.empty() || given.starts_with(L"\\\\?\\")) return given;
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length == 0) return given;
        if (length < full.size()) {
            full.resize(length);
            break;
        }
        full.resize(length);
    }
    if (full.size() >= 3 && full[1] == L':' && full[2] == L'\\') return L"\\\\?\\" + full;
    if (full.starts_with(L"\\\\") && !isDevicePath(full)) return L"\\\\?\\UNC\\" + full.substr(2);
    return full;
}

std::wstring shortForm(std::wstring_view path) {
    if (path.starts_with(L"\\\\?\\UNC\\")) return L"\\\\" + std::wstring(path.substr(8));
    if (path.starts_with(L"\\\\?\\")) return std::wstring(path.substr(4));
    return std::wstring(path);
}

int errnoOf(unsigned long windowsError) {
    switch (windowsError) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_NOT_READY:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_PRIVILEGE_NOT_HELD:
        return EACCES;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return EEXIST;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ENOSPC;
    case ERROR_FILENAME_EXCED_RANGE:
        return ENAMETOOLONG;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return ENOMEM;
    case ERROR_BAD_EXE_FORMAT:
    case ERROR_EXE_MACHINE_TYPE_MISMATCH:
        return ENOEXEC;
    case ERROR_NOT_SAME_DEVICE:
        return EXDEV;
    case ERROR_DIR_NOT_EMPTY:
        return ENOTEMPTY;
    default:
        return EIO;
    }
}

std::string reasonOfWindowsError(unsigned long windowsError) {
    return std::generic_category().message(errnoOf(windowsError));
}

} // namespace ks

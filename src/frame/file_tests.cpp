#include "frame/file_tests.h"

#ifdef _WIN32
#include "frame/windows_paths.h"

#include <windows.h>
#else
#include <filesystem>
#include <system_error>
#endif

namespace ks::file_tests {

#ifdef _WIN32

namespace {

DWORD attributesOf(const std::string& path) {
    const std::wstring name = systemPath(path);
    return name.empty() || isDevicePath(name) ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(name.c_str());
}

bool isFile(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

bool isPlainFile(const std::string& path) { return isFile(attributesOf(path)); }

bool isVisiblePlainFile(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return isFile(attributes) && !(attributes & FILE_ATTRIBUTE_HIDDEN);
}

bool isDirectory(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool hasPlainFile(const std::string& directory) {
    const std::wstring name = systemPath(directory);
    if (name.empty() || isDevicePath(name)) return false;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((name + (name.ends_with(L'\\') ? L"*" : L"\\*")).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    bool plainFile = false;
    do
        plainFile = !(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    while (!plainFile && FindNextFileW(search, &found));
    FindClose(search);
    return plainFile;
}

bool readableByOthers(const std::string&) { return false; }

#else

namespace fs = std::filesystem;

bool isPlainFile(const std::string& path) {
    std::error_code ec;
    return fs::is_regular_file(path, ec);
}

bool isVisiblePlainFile(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    return isPlainFile(path) && !(name.size() > 1 && name[0] == '.');
}

bool isDirectory(const std::string& path) {
    std::error_code ec;
    return fs::is_directory(path, ec);
}

bool hasPlainFile(const std::string& directory) {
    std::error_code ec;
    for (fs::directory_iterator it(directory, ec), end; !ec && it != end; it.increment(ec))
        if (it->is_regular_file(ec)) return true;
    return false;
}

bool readableByOthers(const std::string& path) {
    std::error_code ec;
    const fs::perms permissions = fs::status(path, ec).permissions();
    return !ec && (permissions & fs::perms::others_read) != fs::perms::none;
}

#endif

} // namespace ks::file_tests

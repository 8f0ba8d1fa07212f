// A stand-in for quake2.exe: writes record.txt beside itself, whole, in UTF-8: the command line it was given,
// each of its arguments as the C runtime parts that line, its working directory and what its standard input is.
// It prints one line, which goes to the server's log.

#include <cstdio>
#include <string>

#include <windows.h>

#include <shellapi.h>

namespace {

std::string utf8(const std::wstring& wide) {
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), text.data(), length, nullptr, nullptr);
    return text;
}

} // namespace

int main() {
    std::string record = "line: " + utf8(GetCommandLineW()) + "\n";
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i)
        record += "argument: " + utf8(words[i]) + "\n";
    wchar_t directory[32768];
    record += "directory: " + utf8(std::wstring(directory, GetCurrentDirectoryW(32768, directory))) + "\n";
    const DWORD input = GetFileType(GetStdHandle(STD_INPUT_HANDLE));
    record += std::string("input: ") +
              (input == FILE_TYPE_CHAR   ? "device"
               : input == FILE_TYPE_PIPE ? "pipe"
                                         : "file") +
              "\n";

    wchar_t self[32768];
    std::wstring place(self, GetModuleFileNameW(nullptr, self, 32768));
    place.resize(place.find_last_of(L'\\') + 1);
    const std::wstring partial = place + L"record.tmp";
    const HANDLE file = CreateFileW(partial.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, record.data(), static_cast<DWORD>(record.size()), &written, nullptr);
    CloseHandle(file);
    MoveFileExW(partial.c_str(), (place + L"record.txt").c_str(), MOVEFILE_REPLACE_EXISTING);
    std::printf("server says hello\n");
    return 0;
}

#pragma once

#include <array>
#include <cstdio>
#include <string>

#ifdef _WIN32
#include "frame/windows_paths.h"
#include "server/windows_command_line.h"

#include <gtest/gtest.h>

#include <vector>
#include <windows.h>
#else
#include <sys/wait.h>
#endif

namespace ks::test {

struct Outcome {
    int status;
    std::string output;
};

inline std::string quoted(const std::string& path) { return "'" + path + "'"; }

#ifndef _WIN32

// Runs a shell command and gives its exit status and its standard output.
inline Outcome shell(const std::string& command) {
    Outcome outcome{-1, {}};
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return outcome;
    std::array<char, 4096> buffer;
    for (std::size_t n; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        outcome.output.append(buffer.data(), n);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

// Runs kscfg with the given arguments from the given directory, by default with standard error folded into
// the output.
inline Outcome kscfg(const std::string& arguments, const std::string& from = "/",
                     const std::string& redirection = "2>&1") {
    return shell("cd '" + from + "' && '" + KSCFG_PATH + "' " + arguments + " " + redirection);
}

#else

// Windows has no POSIX shell: the arguments, written as for one, are cut into words here (blanks part them, single
// quotes hold a word together as it stands, double quotes too but for a backslash before " or \), and kscfg.exe
// gets them on a command line quoted by the Windows rules, as the server gets its own.
inline std::vector<std::string> shellWords(const std::string& text) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ' ') {
            if (inWord) words.push_back(word);
            word.clear();
            inWord = false;
            continue;
        }
        inWord = true;
        if (c == '\'') {
            const std::size_t close = text.find('\'', i + 1);
            word += text.substr(i + 1, close - i - 1);
            i = close;
        } else if (c == '"') {
            for (++i; i < text.size() && text[i] != '"'; ++i) {
                if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\\')) ++i;
                word += text[i];
            }
        } else {
            word += c;
        }
    }
    if (inWord) words.push_back(word);
    return words;
}

// Runs kscfg.exe as the POSIX form runs kscfg through the shell. The redirections that the tests use: "2>&1"
// (errors into the output), "" (errors to the test's own stream), "2>&1 >/dev/null" (only the errors), and
// "2>&1 </dev/null"; standard input is NUL in every case.
inline Outcome kscfg(const std::string& arguments, const std::string& from = "/",
                     const std::string& redirection = "2>&1") {
    Outcome outcome{-1, {}};
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    HANDLE reader = nullptr, writer = nullptr;
    if (!CreatePipe(&reader, &writer, &inherit, 0)) return outcome;
    SetHandleInformation(reader, HANDLE_FLAG_INHERIT, 0);
    const HANDLE none = CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                                    OPEN_EXISTING, 0, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = none;
    if (redirection == "2>&1" || redirection == "2>&1 </dev/null") {
        startup.hStdOutput = startup.hStdError = writer;
    } else if (redirection == "2>&1 >/dev/null") {
        startup.hStdOutput = none;
        startup.hStdError = writer;
    } else {
        EXPECT_EQ(redirection, "") << "no such redirection on Windows";
        startup.hStdOutput = writer;
        startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
        SetHandleInformation(startup.hStdError, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    }
    std::wstring line = wideText(windowsCommandLine(KSCFG_PATH, shellWords(arguments)));
    const std::wstring directory = from == "/" ? std::wstring() : wideText(from);
    PROCESS_INFORMATION process{};
    const BOOL started = CreateProcessW(wideText(KSCFG_PATH).c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        directory.empty() ? nullptr : directory.c_str(), &startup, &process);
    CloseHandle(writer);
    CloseHandle(none);
    if (started) {
        std::array<char, 4096> buffer;
        for (DWORD n; ReadFile(reader, buffer.data(), static_cast<DWORD>(buffer.size()), &n, nullptr) && n > 0;)
            outcome.output.append(buffer.data(), n);
        WaitForSingleObject(process.hProcess, INFINITE);
        DWORD status = 0;
        GetExitCodeProcess(process.hProcess, &status);
        outcome.status = static_cast<int>(status);
        CloseHandle(process.hProcess);
        CloseHandle(process.hThread);
    }
    CloseHandle(reader);
    return outcome;
}

#endif

} // namespace ks::test

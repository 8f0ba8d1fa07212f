// Starting programs on Windows: CreateProcessW with one command line quoted by the Windows rules, the program's
// path given apart so that nothing is searched for it, the working directory given to the call, and no shell.

#include "frame/windows_paths.h"
#include "server/process.h"
#include "server/windows_command_line.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <windows.h>

namespace ks {

namespace {

std::string reasonOf(int error) { return std::generic_category().message(error); }

StartResult failure(int error, const std::string& context = {}) {
    return {-1, error, context.empty() ? reasonOf(error) : context + ": " + reasonOf(error)};
}

StartResult windowsFailure(DWORD error, const std::string& context = {}) { return failure(errnoOf(error), context); }

// A handle that closes with its owner.
class Handle {
public:
    explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    ~Handle() {
        if (valid()) CloseHandle(handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    void reset(HANDLE handle) {
        if (valid()) CloseHandle(handle_);
        handle_ = handle;
    }
    bool valid() const { return handle_ != INVALID_HANDLE_VALUE && handle_ != nullptr; }
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

// What the new process is handed: its command line, its program, its directory and its standard streams.
struct Launch {
    std::wstring application; // empty: Windows looks the bare name up
    std::wstring commandLine;
    std::wstring directory; // empty: the caller's
    Handle input, output;
};

// A handle that the new process inherits: NUL, or the log file opened for appending.
HANDLE inheritable(const wchar_t* path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    return CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherit, disposition,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

StartResult openLog(const std::string& path, Handle& output) {
    const std::wstring name = systemPath(path);
    if (isDevicePath(name)) return {-1, EINVAL, "the log file " + path + " is not a regular file"};
    output.reset(inheritable(name.c_str(), FILE_APPEND_DATA | SYNCHRONIZE, OPEN_ALWAYS));
    if (!output.valid()) return windowsFailure(GetLastError(), "the log file " + path);
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileType(output.get()) != FILE_TYPE_DISK || !GetFileInformationByHandle(output.get(), &information) ||
        (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return {-1, EINVAL, "the log file " + path + " is not a regular file"};
    return {};
}

StartResult prepare(Launch& launch, const std::string& program, const std::vector<std::string>& arguments,
                    const std::string& workingDirectory, const StartOptions* streams) {
    if (program.empty()) return failure(ENOENT);
    if (program.find_first_of("\\/:") != std::string::npos) launch.application = shortForm(systemPath(program));
    launch.commandLine = wideText(windowsCommandLine(program, arguments));
    if (!workingDirectory.empty()) {
        launch.directory = shortForm(systemPath(workingDirectory));
        const DWORD attributes = GetFileAttributesW(systemPath(workingDirectory).c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES)
            return windowsFailure(GetLastError(), "the working directory " + workingDirectory);
        if (!(attributes & FILE_ATTRIBUTE_DIRECTORY))
            return failure(ENOTDIR, "the working directory " + workingDirectory);
    }
    if (!streams) return {};
    launch.input.reset(inheritable(L"NUL", GENERIC_READ, OPEN_EXISTING));
    if (!launch.input.valid()) return windowsFailure(GetLastError(), "NUL");
    if (!streams->logFile.empty()) return openLog(streams->logFile, launch.output);
    launch.output.reset(inheritable(L"NUL", GENERIC_WRITE, OPEN_EXISTING));
    return launch.output.valid() ? StartResult{} : windowsFailure(GetLastError(), "NUL");
}

// Starts the prepared process. With `streams` it gets only the handles of `launch` (no other handle of the
// caller's, so that a pipe to the caller closes when the caller ends), else the caller's standard streams.
StartResult create(Launch& launch, bool detached, PROCESS_INFORMATION& process) {
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    HANDLE handles[2] = {launch.input.get(), launch.output.get()};
    std::vector<char> attributeSpace;
    DWORD flags = CREATE_UNICODE_ENVIRONMENT;
    if (launch.input.valid()) {
        startup.StartupInfo.hStdInput = launch.input.get();
        startup.StartupInfo.hStdOutput = startup.StartupInfo.hStdError = launch.output.get();
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        attributeSpace.resize(size);
        startup.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(attributeSpace.data());
        if (!InitializeProcThreadAttributeList(startup.lpAttributeList, 1, 0, &size) ||
            !UpdateProcThreadAttribute(startup.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles,
                                       sizeof handles, nullptr, nullptr))
            return windowsFailure(GetLastError());
        flags |= EXTENDED_STARTUPINFO_PRESENT;
    } else {
        for (const DWORD stream : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
            const HANDLE handle = GetStdHandle(stream);
            if (handle && handle != INVALID_HANDLE_VALUE)
                SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
        }
        startup.StartupInfo.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
        startup.StartupInfo.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
        startup.StartupInfo.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    }
    // Cut loose: no console of the caller's, and a Ctrl+C there does not reach the new process.
    if (detached) flags |= DETACHED_PROCESS | CREATE_NEW_PROCESS_GROUP;
    const BOOL started =
        CreateProcessW(launch.application.empty() ? nullptr : launch.application.c_str(), launch.commandLine.data(),
                       nullptr, nullptr, TRUE, flags, nullptr,
                       launch.directory.empty() ? nullptr : launch.directory.c_str(), &startup.StartupInfo, &process);
    const DWORD error = GetLastError();
    if (startup.lpAttributeList) DeleteProcThreadAttributeList(startup.lpAttributeList);
    if (!started) return windowsFailure(error);
    return {static_cast<long>(process.dwProcessId), 0, {}};
}

} // namespace

StartResult startDetached(const std::string& program, const std::vector<std::string>& arguments,
                          const std::string& workingDirectory, const StartOptions& options) {
    Launch launch;
    if (StartResult prepared = prepare(launch, program, arguments, workingDirectory, &options); prepared.errorNumber)
        return prepared;
    PROCESS_INFORMATION process{};
    const StartResult result = create(launch, options.newSession, process);
    if (result.ok()) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    return result;
}

StartResult spawnChild(const std::string&, const std::vector<std::string>&, const std::string&, const StartOptions&) {
    return {-1, ENOSYS, "waiting for a started program is not supported on Windows"};
}

// Windows cannot put another program in the place of the running one. The program runs with kscfg's standard
// streams and console instead, kscfg waits for it, leaves a Ctrl+C to it, and ends with its exit status.
OperationResult execForeground(const std::string& program, const std::vector<std::string>& arguments,
                               const std::string& workingDirectory) {
    Launch launch;
    if (StartResult prepared = prepare(launch, program, arguments, workingDirectory, nullptr); prepared.errorNumber)
        return prepared.outcome();
    std::fflush(nullptr);
    PROCESS_INFORMATION process{};
    if (const StartResult started = create(launch, false, process); !started.ok()) return started.outcome();
    CloseHandle(process.hThread);
    SetConsoleCtrlHandler(nullptr, TRUE);
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 1;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hProcess);
    ExitProcess(status);
}

} // namespace ks

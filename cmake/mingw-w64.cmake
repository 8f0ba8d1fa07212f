# Cross build for 64-bit Windows with Debian's mingw-w64 (g++-mingw-w64-x86-64-posix: the thread model that
# std::thread needs). Programs are linked statically, so kscfg.exe and the test programs run without the
# compiler's DLLs beside them. When Wine is on the machine it runs the test programs (ctest -L windows).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(ks_mingw x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${ks_mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ks_mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${ks_mingw}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${ks_mingw})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# Debian's wine64 keeps its loader out of PATH.
find_program(KS_WINE64 NAMES wine64 PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
find_program(KS_WINESERVER NAMES wineserver PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(KS_WINE64 AND KS_WINESERVER)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${KS_WINE64})
endif()

# Fails when a header lacks its layer's mark, or when a source lies in no layer.
#
# The compiler keeps the layers apart (src/CMakeLists.txt): each layer sees an include root with its own folder and
# those below it. A header that is included by a path of its own ("../session/startup.h") escapes the roots; its
# first include, "LAYER/layer.h", goes through them and fails below its layer. This check makes sure that every
# header has that mark, so that no spelling of an upward include compiles.
cmake_minimum_required(VERSION 3.25)
# Run as: cmake -DSOURCE_DIR=<src> -P CheckLayers.cmake

set(problems "")
file(GLOB_RECURSE sources RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/*.h ${SOURCE_DIR}/*.cpp)
set(headers 0)
foreach(source ${sources})
    if(NOT source MATCHES "^([^/]+)/[^/]+$")
        string(APPEND problems "${source}: lies in no layer, or below one\n")
        continue()
    endif()
    set(layer ${CMAKE_MATCH_1})
    if(NOT source MATCHES "\\.h$" OR source STREQUAL "${layer}/layer.h")
        continue()
    endif()
    math(EXPR headers "${headers} + 1")
    if(NOT EXISTS ${SOURCE_DIR}/${layer}/layer.h)
        string(APPEND problems "${source}: its layer has no mark ${layer}/layer.h\n")
        continue()
    endif()
    file(STRINGS ${SOURCE_DIR}/${source} includes REGEX "^[ \t]*#[ \t]*include")
    set(first "(no include)")
    if(includes)
        list(GET includes 0 first)
    endif()
    if(NOT first MATCHES "^#include \"${layer}/layer.h\"$")
        string(APPEND problems "${source}: the first include must be \"${layer}/layer.h\", not: ${first}\n")
    endif()
endforeach()

if(problems)
    message(FATAL_ERROR "Headers that the layers' include roots do not hold:\n${problems}")
endif()
message(STATUS "Layers hold: each of ${headers} headers carries its layer's mark.")

# Fails when a source file of the plug-in includes a harness header (host/...) or a header
# private to the host implementation (a file under host/src). Run with cmake -P and
#   -DPLUGIN_SOURCE_DIR=<the plug-in's src/>  -DHOST_SOURCE_DIR=<host/src>
# An include counts as host-private when it names a file under HOST_SOURCE_DIR that the
# plug-in does not have itself (next to the including file or under PLUGIN_SOURCE_DIR).

if(NOT PLUGIN_SOURCE_DIR OR NOT HOST_SOURCE_DIR)
    message(FATAL_ERROR "checkPluginIncludes: PLUGIN_SOURCE_DIR and HOST_SOURCE_DIR are required")
endif()

set(offenders "")
if(IS_DIRECTORY "${PLUGIN_SOURCE_DIR}")
    file(GLOB_RECURSE sources LIST_DIRECTORIES false
        "${PLUGIN_SOURCE_DIR}/*.h" "${PLUGIN_SOURCE_DIR}/*.hh" "${PLUGIN_SOURCE_DIR}/*.hpp"
        "${PLUGIN_SOURCE_DIR}/*.c" "${PLUGIN_SOURCE_DIR}/*.cc" "${PLUGIN_SOURCE_DIR}/*.cpp"
        "${PLUGIN_SOURCE_DIR}/*.cxx" "${PLUGIN_SOURCE_DIR}/*.inl" "${PLUGIN_SOURCE_DIR}/*.ipp")
    foreach(source IN LISTS sources)
        get_filename_component(sourceDir "${source}" DIRECTORY)
        file(RELATIVE_PATH shown "${PLUGIN_SOURCE_DIR}" "${source}")
        file(STRINGS "${source}" lines REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
        foreach(line IN LISTS lines)
            if(NOT line MATCHES "#[ \t]*include[ \t]*[<\"]([^>\"]+)[>\"]")
                continue()
            endif()
            set(included "${CMAKE_MATCH_1}")
            set(reason "")
            if(included MATCHES "^host/" OR included MATCHES "(^|/)host/src/" OR included MATCHES "(^|/)host/include/host/")
                set(reason "harness or host-private header")
            elseif(EXISTS "${HOST_SOURCE_DIR}/${included}"
                   AND NOT IS_DIRECTORY "${HOST_SOURCE_DIR}/${included}"
                   AND NOT EXISTS "${sourceDir}/${included}"
                   AND NOT EXISTS "${PLUGIN_SOURCE_DIR}/${included}")
                set(reason "header of the host implementation (host/src/${included})")
            endif()
            if(reason)
                string(STRIP "${line}" line)
                list(APPEND offenders "  src/${shown}: ${line}  -- ${reason}")
            endif()
        endforeach()
    endforeach()
endif()

if(offenders)
    list(JOIN offenders "\n" report)
    message(FATAL_ERROR "The plug-in includes host internals; it must use only <maya/...> headers:\n${report}")
endif()
list(LENGTH sources count)
message(STATUS "checkPluginIncludes: ${count} plug-in source files use only the API")

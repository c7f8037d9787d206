# FindMaya
# --------
#
# Finds the headers and libraries of an Autodesk Maya 2025 devkit (or of a Maya
# installation with the devkit unpacked into it), and the Qt 6 that Maya ships.
#
# Where to look is taken from, in this order: the MAYA_LOCATION CMake variable, the
# MAYA_LOCATION environment variable. It may point at
#   - Linux:   the devkit or installation root, holding include/ and lib/
#   - Windows: the devkit or installation root, holding include/ and lib/ (*.lib)
#   - macOS:   the devkit or installation root (holding include/ and Maya.app/Contents),
#              or Maya.app/Contents itself
#
# Imported targets:
#   Maya::OpenMaya  Maya::OpenMayaUI  Maya::OpenMayaRender  Maya::OpenMayaAnim  Maya::Foundation
#   Maya::Maya      interface target: all of the above, the include directory, and the
#                   compile definitions and options the platform needs for a plug-in
#   Maya::QtCore  Maya::QtGui  Maya::QtWidgets
#                   Maya's own Qt 6, when its libraries and headers are in the devkit
#                   (Maya_Qt_FOUND). When no Qt6::Core/Gui/Widgets target exists yet,
#                   these are also made available under those names, so sources that
#                   link Qt6::Widgets build unchanged against Maya's Qt; if Maya's moc
#                   is found too, it becomes Qt6::moc so AUTOMOC works.
#
# Result variables:
#   Maya_FOUND, Maya_VERSION (the year, e.g. 2025), Maya_API_VERSION (e.g. 20250000),
#   Maya_INCLUDE_DIRS, Maya_LIBRARIES, Maya_LIBRARY_DIR,
#   Maya_Qt_FOUND, Maya_Qt_VERSION, Maya_Qt_INCLUDE_DIR, Maya_Qt_MOC_EXECUTABLE
#
# Function:
#   maya_plugin(<target>)
#       Makes a MODULE or SHARED library target load as a Maya plug-in: no "lib" prefix,
#       the platform's plug-in suffix (.so on Linux, .mll on Windows, .bundle on macOS),
#       position-independent code, no build run path, and on Windows the two entry
#       points exported. The target still links Maya::Maya itself.
#
# Example:
#   find_package(Maya 2025 REQUIRED)
#   add_library(myPlugin MODULE plugin.cpp)
#   target_link_libraries(myPlugin PRIVATE Maya::Maya)
#   maya_plugin(myPlugin)

include(FindPackageHandleStandardArgs)

# --- where to look --------------------------------------------------------------------
set(_maya_root "")
if(MAYA_LOCATION)
    set(_maya_root "${MAYA_LOCATION}")
elseif(DEFINED ENV{MAYA_LOCATION} AND NOT "$ENV{MAYA_LOCATION}" STREQUAL "")
    file(TO_CMAKE_PATH "$ENV{MAYA_LOCATION}" _maya_root)
endif()
if(_maya_root)
    get_filename_component(_maya_root "${_maya_root}" ABSOLUTE)
endif()

# Pointing MAYA_LOCATION somewhere else forgets what was found at the old place.
if(DEFINED _Maya_LOCATION_USED AND NOT "${_Maya_LOCATION_USED}" STREQUAL "${_maya_root}")
    foreach(_maya_var Maya_INCLUDE_DIR Maya_OpenMaya_LIBRARY Maya_OpenMayaUI_LIBRARY
                      Maya_OpenMayaRender_LIBRARY Maya_OpenMayaAnim_LIBRARY Maya_Foundation_LIBRARY
                      Maya_Qt_INCLUDE_DIR Maya_Qt6Core_LIBRARY Maya_Qt6Gui_LIBRARY
                      Maya_Qt6Widgets_LIBRARY Maya_Qt_MOC_EXECUTABLE)
        unset(${_maya_var} CACHE)
    endforeach()
endif()
set(_Maya_LOCATION_USED "${_maya_root}" CACHE INTERNAL "MAYA_LOCATION the Maya_* cache entries came from")

set(_maya_include_hints "")
set(_maya_lib_hints "")
set(_maya_qt_lib_hints "")
set(_maya_bin_hints "")
if(_maya_root)
    list(APPEND _maya_include_hints "${_maya_root}/include" "${_maya_root}/devkit/include")
    list(APPEND _maya_lib_hints "${_maya_root}/lib" "${_maya_root}/devkit/lib")
    list(APPEND _maya_qt_lib_hints "${_maya_root}/lib")
    list(APPEND _maya_bin_hints "${_maya_root}/bin" "${_maya_root}/libexec" "${_maya_root}/devkit/bin")
    if(APPLE)
        # MAYA_LOCATION at the root: libraries in Maya.app/Contents/MacOS.
        list(APPEND _maya_lib_hints "${_maya_root}/Maya.app/Contents/MacOS")
        list(APPEND _maya_qt_lib_hints "${_maya_root}/Maya.app/Contents/Frameworks"
                                        "${_maya_root}/Maya.app/Contents/MacOS")
        list(APPEND _maya_bin_hints "${_maya_root}/Maya.app/Contents/bin"
                                    "${_maya_root}/Maya.app/Contents/libexec")
        # MAYA_LOCATION at Maya.app/Contents: headers two levels up.
        list(APPEND _maya_include_hints "${_maya_root}/../../include" "${_maya_root}/../../devkit/include")
        list(APPEND _maya_lib_hints "${_maya_root}/MacOS")
        list(APPEND _maya_qt_lib_hints "${_maya_root}/Frameworks" "${_maya_root}/MacOS")
    endif()
endif()

# --- headers and version --------------------------------------------------------------
find_path(Maya_INCLUDE_DIR
    NAMES maya/MFn.h
    HINTS ${_maya_include_hints}
    NO_DEFAULT_PATH)

set(Maya_API_VERSION "")
set(Maya_VERSION "")
if(Maya_INCLUDE_DIR AND EXISTS "${Maya_INCLUDE_DIR}/maya/MTypes.h")
    file(STRINGS "${Maya_INCLUDE_DIR}/maya/MTypes.h" _maya_api_line
         REGEX "^[ \t]*#[ \t]*define[ \t]+MAYA_API_VERSION[ \t]+[0-9]+")
    if(_maya_api_line MATCHES "MAYA_API_VERSION[ \t]+([0-9]+)")
        set(Maya_API_VERSION "${CMAKE_MATCH_1}")
        # 20250000 -> 2025; older releases used six digits (201800 -> 2018).
        string(LENGTH "${Maya_API_VERSION}" _maya_api_len)
        if(_maya_api_len GREATER_EQUAL 8)
            math(EXPR Maya_VERSION "${Maya_API_VERSION} / 10000")
        elseif(_maya_api_len GREATER_EQUAL 6)
            math(EXPR Maya_VERSION "${Maya_API_VERSION} / 100")
        endif()
    endif()
endif()

# --- the Maya libraries ---------------------------------------------------------------
set(_maya_components OpenMaya OpenMayaUI OpenMayaRender OpenMayaAnim Foundation)
set(_maya_required_vars Maya_INCLUDE_DIR)
foreach(_maya_lib IN LISTS _maya_components)
    find_library(Maya_${_maya_lib}_LIBRARY
        NAMES ${_maya_lib}
        HINTS ${_maya_lib_hints}
        NO_DEFAULT_PATH)
    list(APPEND _maya_required_vars Maya_${_maya_lib}_LIBRARY)
    mark_as_advanced(Maya_${_maya_lib}_LIBRARY)
endforeach()
mark_as_advanced(Maya_INCLUDE_DIR)

if(Maya_OpenMaya_LIBRARY)
    get_filename_component(Maya_LIBRARY_DIR "${Maya_OpenMaya_LIBRARY}" DIRECTORY)
endif()

# --- Maya's Qt ------------------------------------------------------------------------
# Headers: include/QtCore etc. directly, or in a qt/ or qt-6.x/ folder next to them.
set(_maya_qt_include_hints "")
foreach(_maya_dir IN LISTS _maya_include_hints)
    list(APPEND _maya_qt_include_hints "${_maya_dir}" "${_maya_dir}/qt" "${_maya_dir}/Qt"
                                       "${_maya_dir}/qt6" "${_maya_dir}/Qt6")
    file(GLOB _maya_qt_versioned LIST_DIRECTORIES true "${_maya_dir}/qt-6*" "${_maya_dir}/qt_6*"
                                                     "${_maya_dir}/Qt-6*" "${_maya_dir}/Qt6.*")
    foreach(_maya_qt_dir IN LISTS _maya_qt_versioned)
        if(IS_DIRECTORY "${_maya_qt_dir}")
            list(APPEND _maya_qt_include_hints "${_maya_qt_dir}" "${_maya_qt_dir}/include")
        endif()
    endforeach()
endforeach()
if(_maya_root)
    list(APPEND _maya_qt_include_hints "${_maya_root}/Qt/include" "${_maya_root}/qt/include")
endif()

find_path(Maya_Qt_INCLUDE_DIR
    NAMES QtCore/qglobal.h
    HINTS ${_maya_qt_include_hints}
    NO_DEFAULT_PATH)
mark_as_advanced(Maya_Qt_INCLUDE_DIR)

set(_maya_qt_modules Core Gui Widgets)
set(_maya_qt_found TRUE)
foreach(_maya_qt IN LISTS _maya_qt_modules)
    # Linux may ship only the versioned file (libQt6Core.so.6); macOS ships frameworks (QtCore.framework).
    find_library(Maya_Qt6${_maya_qt}_LIBRARY
        NAMES Qt6${_maya_qt} libQt6${_maya_qt}.so.6 Qt${_maya_qt}
        HINTS ${_maya_qt_lib_hints}
        NO_DEFAULT_PATH)
    mark_as_advanced(Maya_Qt6${_maya_qt}_LIBRARY)
    if(NOT Maya_Qt6${_maya_qt}_LIBRARY)
        set(_maya_qt_found FALSE)
    endif()
endforeach()

set(Maya_Qt_VERSION "")
if(Maya_Qt_INCLUDE_DIR)
    foreach(_maya_qt_header qconfig.h qtcore-config.h qtversion.h)
        if(NOT Maya_Qt_VERSION AND EXISTS "${Maya_Qt_INCLUDE_DIR}/QtCore/${_maya_qt_header}")
            file(STRINGS "${Maya_Qt_INCLUDE_DIR}/QtCore/${_maya_qt_header}" _maya_qt_line
                 REGEX "#[ \t]*define[ \t]+QT_VERSION_STR[ \t]+\"[0-9.]+\"")
            if(_maya_qt_line MATCHES "\"([0-9]+\\.[0-9]+(\\.[0-9]+)?)\"")
                set(Maya_Qt_VERSION "${CMAKE_MATCH_1}")
            endif()
        endif()
    endforeach()
endif()

# Headers found as frameworks only (macOS) also count.
set(_maya_qt_framework_dir "")
if(APPLE AND Maya_Qt6Core_LIBRARY MATCHES "\\.framework$")
    get_filename_component(_maya_qt_framework_dir "${Maya_Qt6Core_LIBRARY}" DIRECTORY)
endif()
if(NOT Maya_Qt_INCLUDE_DIR AND NOT _maya_qt_framework_dir)
    set(_maya_qt_found FALSE)
endif()
set(Maya_Qt_FOUND ${_maya_qt_found})

find_program(Maya_Qt_MOC_EXECUTABLE
    NAMES moc
    HINTS ${_maya_bin_hints}
    NO_DEFAULT_PATH)
mark_as_advanced(Maya_Qt_MOC_EXECUTABLE)

# --- result ---------------------------------------------------------------------------
find_package_handle_standard_args(Maya
    REQUIRED_VARS ${_maya_required_vars}
    VERSION_VAR Maya_VERSION
    FAIL_MESSAGE "Set MAYA_LOCATION to the root of a Maya 2025 devkit (the folder holding include/maya)")

if(Maya_FOUND AND Maya_VERSION AND NOT Maya_VERSION EQUAL 2025 AND NOT Maya_FIND_QUIETLY)
    message(WARNING "tqSarn targets Maya 2025; the devkit at ${Maya_INCLUDE_DIR} is Maya ${Maya_VERSION}")
endif()

if(Maya_FOUND)
    set(Maya_INCLUDE_DIRS "${Maya_INCLUDE_DIR}")
    set(Maya_LIBRARIES "")
    foreach(_maya_lib IN LISTS _maya_components)
        list(APPEND Maya_LIBRARIES "${Maya_${_maya_lib}_LIBRARY}")
    endforeach()
endif()

if(Maya_FOUND AND NOT TARGET Maya::Maya)
    foreach(_maya_lib IN LISTS _maya_components)
        if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
            add_library(Maya::${_maya_lib} SHARED IMPORTED)
            # Link by name, so the plug-in records libOpenMaya.so and not the build machine's path.
            set_target_properties(Maya::${_maya_lib} PROPERTIES
                IMPORTED_LOCATION "${Maya_${_maya_lib}_LIBRARY}"
                IMPORTED_NO_SONAME TRUE)
        else()
            # Windows: the import library (.lib); macOS: the .dylib.
            add_library(Maya::${_maya_lib} UNKNOWN IMPORTED)
            set_target_properties(Maya::${_maya_lib} PROPERTIES
                IMPORTED_LOCATION "${Maya_${_maya_lib}_LIBRARY}")
        endif()
        set_target_properties(Maya::${_maya_lib} PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES "${Maya_INCLUDE_DIR}")
    endforeach()

    add_library(Maya::Maya INTERFACE IMPORTED)
    set_target_properties(Maya::Maya PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES "${Maya_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES "Maya::OpenMaya;Maya::OpenMayaUI;Maya::OpenMayaRender;Maya::OpenMayaAnim;Maya::Foundation")
    if(WIN32)
        set_property(TARGET Maya::Maya PROPERTY INTERFACE_COMPILE_DEFINITIONS
            NT_PLUGIN _WIN32 WIN32 _WINDOWS REQUIRE_IOSTREAM _BOOL NOMINMAX)
    elseif(APPLE)
        set_property(TARGET Maya::Maya PROPERTY INTERFACE_COMPILE_DEFINITIONS
            OSMac_ MAC_PLUGIN REQUIRE_IOSTREAM _BOOL)
    else()
        set_property(TARGET Maya::Maya PROPERTY INTERFACE_COMPILE_DEFINITIONS
            LINUX _BOOL REQUIRE_IOSTREAM)
        set_property(TARGET Maya::Maya PROPERTY INTERFACE_COMPILE_OPTIONS -fPIC)
        # Maya's libraries need each other at link time; let the linker find them.
        set_property(TARGET Maya::Maya PROPERTY INTERFACE_LINK_OPTIONS
            "LINKER:-rpath-link,${Maya_LIBRARY_DIR}")
    endif()
endif()

if(Maya_FOUND AND Maya_Qt_FOUND AND NOT TARGET Maya::QtCore)
    foreach(_maya_qt IN LISTS _maya_qt_modules)
        add_library(Maya::Qt${_maya_qt} UNKNOWN IMPORTED)
        string(TOUPPER "${_maya_qt}" _maya_qt_upper)
        set(_maya_qt_includes "")
        if(Maya_Qt_INCLUDE_DIR)
            list(APPEND _maya_qt_includes "${Maya_Qt_INCLUDE_DIR}" "${Maya_Qt_INCLUDE_DIR}/Qt${_maya_qt}")
        endif()
        set_target_properties(Maya::Qt${_maya_qt} PROPERTIES
            IMPORTED_LOCATION "${Maya_Qt6${_maya_qt}_LIBRARY}"
            INTERFACE_INCLUDE_DIRECTORIES "${_maya_qt_includes}"
            INTERFACE_COMPILE_DEFINITIONS "QT_${_maya_qt_upper}_LIB")
        if(_maya_qt_framework_dir)
            set_property(TARGET Maya::Qt${_maya_qt} APPEND PROPERTY
                INTERFACE_COMPILE_OPTIONS "-F${_maya_qt_framework_dir}")
        endif()
    endforeach()
    set_property(TARGET Maya::QtGui PROPERTY INTERFACE_LINK_LIBRARIES Maya::QtCore)
    set_property(TARGET Maya::QtWidgets PROPERTY INTERFACE_LINK_LIBRARIES "Maya::QtGui;Maya::QtCore")
    # Lets AUTOMOC see which Qt a target uses.
    set_target_properties(Maya::QtCore PROPERTIES
        INTERFACE_QT_MAJOR_VERSION 6
        COMPATIBLE_INTERFACE_STRING QT_MAJOR_VERSION)

    # The same names the system Qt would give, unless a real Qt 6 package was found.
    foreach(_maya_qt IN LISTS _maya_qt_modules)
        if(NOT TARGET Qt6::${_maya_qt})
            add_library(Qt6::${_maya_qt} ALIAS Maya::Qt${_maya_qt})
        endif()
    endforeach()
    if(Maya_Qt_MOC_EXECUTABLE AND NOT TARGET Qt6::moc)
        add_executable(Qt6::moc IMPORTED)
        set_target_properties(Qt6::moc PROPERTIES IMPORTED_LOCATION "${Maya_Qt_MOC_EXECUTABLE}")
    endif()
    if(NOT DEFINED Qt6Core_VERSION_MAJOR AND Maya_Qt_VERSION MATCHES "^([0-9]+)\\.([0-9]+)")
        set(Qt6Core_VERSION_MAJOR "${CMAKE_MATCH_1}")
        set(Qt6Core_VERSION_MINOR "${CMAKE_MATCH_2}")
    endif()
endif()

if(NOT Maya_FIND_QUIETLY AND Maya_FOUND)
    if(Maya_Qt_FOUND)
        message(STATUS "Maya's Qt ${Maya_Qt_VERSION}: ${Maya_Qt6Core_LIBRARY}")
    else()
        message(STATUS "Maya's Qt was not found in the devkit (looked for Qt6Core/Gui/Widgets "
                       "libraries next to OpenMaya and QtCore/qglobal.h under include/)")
    endif()
endif()

function(maya_plugin target)
    if(NOT TARGET ${target})
        message(FATAL_ERROR "maya_plugin: '${target}' is not a target")
    endif()
    get_target_property(_type ${target} TYPE)
    if(NOT _type STREQUAL "MODULE_LIBRARY" AND NOT _type STREQUAL "SHARED_LIBRARY")
        message(FATAL_ERROR "maya_plugin: '${target}' must be a MODULE or SHARED library (it is ${_type})")
    endif()
    if(WIN32)
        set(_suffix ".mll")
    elseif(APPLE)
        set(_suffix ".bundle")
    else()
        set(_suffix ".so")
    endif()
    set_target_properties(${target} PROPERTIES
        PREFIX ""
        SUFFIX "${_suffix}"
        POSITION_INDEPENDENT_CODE ON
        # Maya has its libraries loaded already; no run path into the devkit.
        SKIP_BUILD_RPATH TRUE)
    if(MSVC)
        # Maya looks these two up by name.
        target_link_options(${target} PRIVATE "/export:initializePlugin" "/export:uninitializePlugin")
    endif()
endfunction()

unset(_maya_root)
unset(_maya_include_hints)
unset(_maya_lib_hints)
unset(_maya_qt_lib_hints)
unset(_maya_qt_include_hints)
unset(_maya_bin_hints)
unset(_maya_required_vars)
unset(_maya_qt_found)
unset(_maya_api_line)
unset(_maya_api_len)
unset(_maya_qt_line)
unset(_maya_qt_versioned)

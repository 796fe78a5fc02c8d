# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Modules are loaded by name, by every executable of the build: the product and its tests. An old
# kind of search path is asked for, as the newer holds only for what the executable itself loads, and
# under a sanitizer that is who loads.
include(GNUInstallDirs)
# Two folders deep: CPack takes what lies higher for the business of ldconfig.
set(KESTLE_MODULE_FOLDER ${CMAKE_INSTALL_LIBDIR}/kestle/modules)
set(CMAKE_BUILD_RPATH ${PROJECT_BINARY_DIR}/${KESTLE_MODULE_FOLDER})
add_link_options(LINKER:--disable-new-dtags)

# kestle_module(target name): the module lib<name>.so, in the place where it is looked for.
function(kestle_module target name)
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${name}
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${KESTLE_MODULE_FOLDER}
        NO_SONAME TRUE
        CXX_VISIBILITY_PRESET hidden
        AUTOMOC OFF)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
    # Nothing is executed in a module, but every library is expected to know the C library.
    target_link_options(${target} PRIVATE LINKER:--no-as-needed)
    install(TARGETS ${target} LIBRARY DESTINATION ${KESTLE_MODULE_FOLDER})
endfunction()

# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# One set of warnings for every target of ours; presets decide whether they are errors.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
                        QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
                        QT_DISABLE_DEPRECATED_BEFORE=0x060400)

set(KESTLE_SANITIZERS "" CACHE STRING "Sanitizers for -fsanitize=, comma separated")
if(KESTLE_SANITIZERS)
    add_compile_options(-fsanitize=${KESTLE_SANITIZERS} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    # Instrumented code confuses GCC's flow analysis: it takes an absent optional for a wild one.
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options(-fsanitize=${KESTLE_SANITIZERS})
endif()

# Many tests link the same large libraries; gold takes half the time of the default linker. It warns
# at Clang's sanitizers.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=gold KESTLE_HAS_GOLD)
if(KESTLE_HAS_GOLD AND CMAKE_BUILD_TYPE STREQUAL Debug AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_link_options(-fuse-ld=gold)
endif()

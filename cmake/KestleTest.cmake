# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# kestle_test(Name library...): Name.cpp holds one Qt Test class; it links the one layer it tests.
function(kestle_test name)
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE Qt6::Test ${ARGN})
    cmake_language(EVAL CODE "cmake_language(DEFER CALL kestle_moc_alone [[${name}]])")
    kestle_test_run(${name} ${name})
endfunction()

# A test of one file needs no more than one run of moc: automatic moc would run CMake and compile an
# empty file for each, which adds up to a sixth of a build from nothing.
function(kestle_moc_alone name)
    get_target_property(sources ${name} SOURCES)
    if(NOT sources STREQUAL "${name}.cpp")
        return()
    endif()
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    qt_generate_moc(${name}.cpp ${name}.moc TARGET ${name})
    target_sources(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
endfunction()

# kestle_test_run(Name command...): one run of a test. Exit status 77 means skipped, with the reason
# printed.
function(kestle_test_run name)
    add_test(NAME ${name} COMMAND ${ARGN})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 120
        SKIP_RETURN_CODE 77
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANGUAGE=;KESTLE_SHARED_MEDIA=${KESTLE_SHARED_MEDIA}")
endfunction()

# Real camera files for checking, kept outside the project; tests over them are skipped without.
set(KESTLE_SHARED_MEDIA "${PROJECT_SOURCE_DIR}/../shared/media" CACHE PATH
    "Folder of real camera files for checking; may be missing")

# kestle_test_at_scales(Name scale...): further runs of a test, with so many pixels to the point.
function(kestle_test_at_scales name)
    foreach(scale ${ARGN})
        kestle_test_run(${name}@${scale} ${name})
        set_property(TEST ${name}@${scale} APPEND PROPERTY ENVIRONMENT "QT_SCALE_FACTOR=${scale}")
        set_tests_properties(${name}@${scale} PROPERTIES LABELS window)
    endforeach()
endfunction()

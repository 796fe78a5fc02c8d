# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# kestle_precompile_headers(directory): compiles once what nearly every file below the directory
# includes of Qt and the standard library, which takes the compiler longer than most files
# themselves and halves a build from nothing. To be called when every target is there.
#
# The files of a library are compiled at one go for the same reason, so what is a file's own needs a name
# of its own within the library. All but the decoders', where the work is in the files themselves, and the
# tests'.
#
# Neither where a compiler cache is in use: it could not tell whether those headers have changed, and it
# makes sure that every file also compiles with nothing but its own includes.
function(kestle_precompile_headers directory)
    if(CMAKE_CXX_COMPILER_LAUNCHER)
        return()
    endif()
    file(CONFIGURE OUTPUT kestle_headers.cpp CONTENT "")
    add_library(kestle_headers STATIC ${CMAKE_CURRENT_BINARY_DIR}/kestle_headers.cpp)
    set_target_properties(kestle_headers PROPERTIES AUTOMOC OFF)
    target_link_libraries(kestle_headers PRIVATE Qt6::Core)
    # Of these the headers only: linking each defines a macro that the other targets have not.
    foreach(library QCoro6::Core QCoro6::Coro Qt6::Concurrent Qt6::Gui)
        target_include_directories(kestle_headers SYSTEM PRIVATE
            $<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
    # QTest is not among them: its macros differ from folder to folder.
    target_precompile_headers(kestle_headers PRIVATE
        <QCoroFuture> <QCoroTask> <QDateTime> <QFuture> <QHash> <QImage> <QJsonDocument>
        <QJsonObject> <QList> <QObject> <QPointer> <QSet> <QString> <QTemporaryDir> <QThreadPool>
        <QTimer> <QVariant> <QtConcurrent/qtconcurrentrun.h>
        <algorithm> <atomic> <chrono> <filesystem> <fstream> <functional> <map> <memory> <optional>
        <random> <set> <stop_token> <string> <thread> <vector>)
    kestle_reuse_headers(${directory})
endfunction()

function(kestle_reuse_headers directory)
    get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target ${targets})
        get_target_property(type ${target} TYPE)
        get_target_property(libraries ${target} LINK_LIBRARIES)
        get_target_property(options ${target} COMPILE_OPTIONS)
        get_target_property(usual_options kestle_headers COMPILE_OPTIONS)
        # Compiled headers are good for the options they were compiled with. Plug-ins are written by
        # Qt, with macros of their own.
        if(type MATCHES "STATIC_LIBRARY|EXECUTABLE" AND libraries MATCHES "Qt6|kestle"
           AND options STREQUAL usual_options AND NOT target MATCHES "plugin|kestle_headers")
            target_precompile_headers(${target} REUSE_FROM kestle_headers)
            if(type STREQUAL "STATIC_LIBRARY"
               AND NOT target MATCHES "^(kestle_imageio|kestle_test_.*|kestle_fuzzed)$")
                # What these warn of is a file's own matter, and was said when it was compiled alone.
                target_compile_options(${target} PRIVATE -Wno-shadow -Wno-subobject-linkage)
                set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
            endif()
        endif()
    endforeach()
    get_property(folders DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
    foreach(folder ${folders})
        kestle_reuse_headers(${folder})
    endforeach()
endfunction()

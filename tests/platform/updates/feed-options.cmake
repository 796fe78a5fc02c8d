# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# cmake -P feed-options.cmake: what a build may be told of its feed, and what holds unless it is told.
set(module ${CMAKE_CURRENT_LIST_DIR}/../../../cmake/KestleFeed.cmake)
set(key AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=)

include(${module})
if(KESTLE_FEED_URL OR KESTLE_FEED_KEY)
    message(FATAL_ERROR "The usual build has a feed: ${KESTLE_FEED_URL} ${KESTLE_FEED_KEY}")
endif()
if(NOT KESTLE_FEED_SIGNED)
    message(FATAL_ERROR "A feed that is not signed is believed unless the build is told otherwise.")
endif()

# expect(status url key): 0 when the build takes them.
function(expect expected url key)
    execute_process(
        COMMAND ${CMAKE_COMMAND} "-DKESTLE_FEED_URL=${url}" "-DKESTLE_FEED_KEY=${key}" -P ${module}
        RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE said)
    if(NOT status EQUAL expected)
        message(FATAL_ERROR "\"${url}\" with \"${key}\": ${status}, not ${expected} ${said}")
    endif()
endfunction()
expect(0 "https://kestle.test/feed.xml" ${key})
expect(1 "https://kestle.test/feed.xml" "")
expect(1 "" ${key})
expect(1 "http://kestle.test/feed.xml" ${key})
expect(1 "https://kestle.test/\"" ${key})
expect(1 "https://kestle.test/feed.xml" AAAA)
expect(1 "https://kestle.test/feed.xml" "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA\"=")

# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Only for builds that no package manager updates: where they learn of newer versions.
set(KESTLE_FEED_URL "" CACHE STRING "HTTPS address of a feed of versions (Sparkle appcast), or empty")
set(KESTLE_FEED_KEY "" CACHE STRING "Ed25519 public key of that feed, 32 bytes in Base64")
# Of what a download holds, a feed that is not signed says what it likes.
option(KESTLE_FEED_SIGNED "Refuse a feed that is not signed itself" ON)
if(KESTLE_FEED_URL OR KESTLE_FEED_KEY)
    if(NOT KESTLE_FEED_URL MATCHES "^https://[^/\"\\ ]+[^\"\\ ]*$")
        message(FATAL_ERROR "KESTLE_FEED_URL is no https address: ${KESTLE_FEED_URL}")
    endif()
    if(NOT KESTLE_FEED_KEY MATCHES "^[A-Za-z0-9+/]+=$")
        message(FATAL_ERROR "KESTLE_FEED_KEY is not 32 bytes in Base64: ${KESTLE_FEED_KEY}")
    endif()
    string(LENGTH "${KESTLE_FEED_KEY}" key_length)
    if(NOT key_length EQUAL 44)
        message(FATAL_ERROR "KESTLE_FEED_KEY is not 32 bytes in Base64: ${KESTLE_FEED_KEY}")
    endif()
endif()

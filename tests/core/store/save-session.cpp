// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Saves one snapshot or tells which one is there, for a test that breaks the saving from outside.
//
// usage: save-session save FOLDER NUMBER    exit status 3 when the save threw
//        save-session load FOLDER           prints the number, "none" or "half"

#include "core/store/SessionStore.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <system_error>

using namespace Qt::StringLiterals;

/// Every part tells the number, so that half of one and half of another cannot pass for a whole.
static SessionSnapshot numbered(qint64 number)
{
    SessionSnapshot snapshot = {.volumeUUID = u"1234-ABCD"_s,
                                .inventoryHash = QString::number(number).rightJustified(64, u'0'),
                                .currentIndex = number,
                                .savedAt =
                                    QDateTime::fromSecsSinceEpoch(1'800'000'000 + number, Qt::UTC)};
    for (qint64 id = 0; id < 1000; ++id) {
        snapshot.rejectedIDs.insert(u"%1_FUJI/DSCF%2"_s.arg(number).arg(id));
    }
    return snapshot;
}

/// A system call that shows in a trace and does nothing.
static void mark(const char *name)
{
    static_cast<void>(::access(name, F_OK));
}

static int save(const char *folder, qint64 number)
{
    const auto snapshot = numbered(number);
    int status = 0;
    mark("mark: begin");
    try {
        SessionStore(folder).save(snapshot);
    } catch (const std::system_error &) {
        status = 3;
    }
    mark("mark: end");
    return status;
}

static int load(const char *folder)
{
    const auto snapshot = SessionStore(folder).load(numbered(0).volumeUUID);
    if (!snapshot) {
        std::puts("none");
    } else if (*snapshot != numbered(snapshot->currentIndex)) {
        std::puts("half");
    } else {
        std::printf("%lld\n", snapshot->currentIndex);
    }
    return 0;
}

int main(int argc, char **argv)
{
    if (argc == 4 && std::strcmp(argv[1], "save") == 0) {
        return save(argv[2], std::stoll(argv[3]));
    }
    if (argc == 3 && std::strcmp(argv[1], "load") == 0) {
        return load(argv[2]);
    }
    return 2;
}

// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/ReplaceFile.h"

#include "platform/files/SyncedFolder.h"
#include "platform/files/SystemCall.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

// QSaveFile does not serve: it goes on after an fsync that failed, never syncs the folder and
// leaves the mode to the umask.

static void writeWhole(int file, std::string_view content)
{
    while (!content.empty()) {
        const auto count =
            uninterrupted([&] { return ::write(file, content.data(), content.size()); });
        if (count == 0) {
            errno = EIO; // a write that takes nothing will not take more the next time
        }
        if (count <= 0) {
            throwLastError("write");
        }
        content.remove_prefix(static_cast<std::size_t>(count));
    }
}

static void writeDurably(FileDescriptor file, std::string_view content)
{
    if (::fchmod(file.number(), S_IRUSR | S_IWUSR) != 0) { // whatever the umask took away
        throwLastError("fchmod");
    }
    writeWhole(file.number(), content);
    if (uninterrupted([&] { return ::fsync(file.number()); }) != 0) {
        throwLastError("fsync");
    }
    // An interrupted close has closed the file; there is nothing to repeat.
    if (::close(file.release()) != 0 && errno != EINTR) {
        throwLastError("close");
    }
}

void replaceFile(const std::filesystem::path &file, const QByteArray &content)
{
    const SyncedFolder folder(file.parent_path());
    folder.holdWithOthers(); // who sweeps the folder takes a file that is half written for litter
    const auto extension = file.extension().native();
    std::string temporary;
    FileDescriptor descriptor(uninterrupted([&] {
        temporary = (file.parent_path() / file.stem()).native() + ".XXXXXX" + extension;
        return ::mkostemps(temporary.data(), static_cast<int>(extension.size()), O_CLOEXEC);
    }));
    if (!descriptor.isOpen()) {
        throwLastError("mkostemps");
    }
    try {
        writeDurably(std::move(descriptor), {content.data(), std::size_t(content.size())});
        if (::rename(temporary.c_str(), file.c_str()) != 0) {
            throwLastError("rename");
        }
    } catch (const std::system_error &) {
        ::unlink(temporary.c_str());
        throw;
    }
    folder.sync();
}

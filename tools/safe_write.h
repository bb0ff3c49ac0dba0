// Writing a file that may be in use: what 'cfgmsg set -o OUT' and 'set -i'
// do to OUT.
//
// - A symbolic link is followed (link by link) to the file it names; the
//   link stays.
// - A regular file (or a name that does not exist yet) is written whole to
//   a temporary file in its own directory, flushed to the disk and renamed
//   over it: a reader sees the old file or the new one, never a part. The
//   new file keeps the owner, group and mode of the old one; when they
//   cannot be kept (another user's file, not run as root), nothing is
//   written.
// - Anything else that can be opened for writing (a character or block
//   device, a FIFO, a socket) is written through, never replaced: `-o
//   /dev/null` as root leaves /dev/null a device.
// - The temporary file is removed on every error and when SIGINT, SIGTERM,
//   SIGHUP, SIGQUIT or SIGXFSZ (the file size limit) arrive while it
//   exists.
#pragma once

#include <string>
#include <string_view>

namespace cfgmsg {

// Writes `data` to `target` as described above. False with `error` set to
// one line ("TARGET: reason") when nothing, or not all, could be written; a
// regular target is then as it was.
bool safe_write(const std::string &target, std::string_view data, std::string &error);

} // namespace cfgmsg

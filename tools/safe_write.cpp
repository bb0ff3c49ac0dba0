#include "safe_write.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace cfgmsg {

namespace {

std::string why(int err)
{
    return std::strerror(err);
}

std::string directory_of(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The file that `path` names once every symbolic link is followed; a name
// that does not exist (or a link to one) is returned as it is.
bool follow_links(std::string path, std::string &out, std::string &error)
{
    for (int hops = 0; hops < 40; ++hops) {
        struct stat st {};
        if (lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) {
            out = path;
            return true;
        }
        std::string link(PATH_MAX, '\0');
        const ssize_t n = readlink(path.c_str(), link.data(), link.size());
        if (n < 0) {
            error = path + ": cannot read the link: " + why(errno);
            return false;
        }
        link.resize(static_cast<std::size_t>(n));
        path = link.starts_with('/') ? link : directory_of(path) + "/" + link;
    }
    error = path + ": too many levels of symbolic links";
    return false;
}

bool write_all(int fd, std::string_view data)
{
    while (!data.empty()) {
        const ssize_t n = ::write(fd, data.data(), data.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            if (n == 0)
                errno = EIO;
            return false;
        }
        data.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

// A device, FIFO or socket: written through, as the shell's '>' would.
bool write_through(const std::string &path, const struct stat &st, std::string_view data, std::string &error)
{
    int fd = -1;
    if (S_ISSOCK(st.st_mode)) {
        sockaddr_un addr{};
        addr.sun_family = AF_UNIX;
        if (path.size() >= sizeof addr.sun_path) {
            error = path + ": socket path too long";
            return false;
        }
        std::memcpy(addr.sun_path, path.c_str(), path.size() + 1);
        fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (fd >= 0 && connect(fd, reinterpret_cast<const sockaddr *>(&addr), sizeof addr) != 0) {
            const int err = errno;
            close(fd);
            fd = -1;
            errno = err;
        }
    } else {
        fd = open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    }
    if (fd < 0) {
        error = path + ": cannot open for writing: " + why(errno);
        return false;
    }
    const bool ok = write_all(fd, data);
    const int err = errno;
    if (close(fd) != 0 && ok) {
        error = path + ": cannot write: " + why(errno);
        return false;
    }
    if (!ok)
        error = path + ": cannot write: " + why(err);
    return ok;
}

// The temporary file, for the signal handler: removed when a signal that
// ends the program arrives while it exists.
char temp_name[PATH_MAX + 16];
volatile sig_atomic_t temp_exists = 0;
// SIGXFSZ: the file size limit reached while writing it.
constexpr int ending_signals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXFSZ};

extern "C" void remove_temp_and_die(int sig)
{
    if (temp_exists)
        unlink(temp_name);
    signal(sig, SIG_DFL);
    raise(sig);
}

// While it lives, the ending signals remove the temporary file first (a
// signal the caller ignores stays ignored).
struct temp_guard {
    struct sigaction before[std::size(ending_signals)]{};
    bool installed[std::size(ending_signals)]{};
    temp_guard()
    {
        struct sigaction on {};
        on.sa_handler = remove_temp_and_die;
        sigemptyset(&on.sa_mask);
        for (std::size_t i = 0; i < std::size(ending_signals); ++i) {
            sigaction(ending_signals[i], nullptr, &before[i]);
            if (before[i].sa_handler == SIG_IGN)
                continue;
            installed[i] = sigaction(ending_signals[i], &on, nullptr) == 0;
        }
    }
    ~temp_guard()
    {
        if (temp_exists)
            unlink(temp_name);
        temp_exists = 0;
        for (std::size_t i = 0; i < std::size(ending_signals); ++i)
            if (installed[i])
                sigaction(ending_signals[i], &before[i], nullptr);
    }
    temp_guard(const temp_guard &) = delete;
    temp_guard &operator=(const temp_guard &) = delete;
};

// Creates the temporary file with the signals blocked, so that a signal
// never finds it made but not yet known.
int make_temp(const std::string &pattern)
{
    sigset_t block, old;
    sigemptyset(&block);
    for (int s : ending_signals)
        sigaddset(&block, s);
    sigprocmask(SIG_BLOCK, &block, &old);
    std::memcpy(temp_name, pattern.c_str(), pattern.size() + 1);
    const int fd = mkostemp(temp_name, O_CLOEXEC);
    const int err = errno;
    temp_exists = fd >= 0;
    sigprocmask(SIG_SETMASK, &old, nullptr);
    errno = err;
    return fd;
}

bool replace_regular(const std::string &path, const struct stat *old, std::string_view data,
                     std::string &error)
{
    const std::string folder = directory_of(path);
    const std::string base = path.substr(path.rfind('/') == std::string::npos ? 0 : path.rfind('/') + 1);
    const std::string pattern = folder + "/." + base + ".XXXXXX";
    if (pattern.size() >= PATH_MAX) {
        error = path + ": name too long";
        return false;
    }
    const temp_guard guard;
    const int fd = make_temp(pattern);
    if (fd < 0) {
        error = path + ": cannot create a file in " + folder + ": " + why(errno);
        return false;
    }
    mode_t mode;
    if (old != nullptr) {
        mode = old->st_mode & 07777;
    } else {
        const mode_t mask = umask(0);
        umask(mask);
        mode = 0666 & ~mask;
    }
    struct stat made {};
    std::string step;
    const auto failed = [&](std::string what) {
        if (step.empty())
            step = std::move(what) + ": " + why(errno);
        return false;
    };
    bool ok = write_all(fd, data) || failed("cannot write");
    if (ok && old != nullptr && fstat(fd, &made) == 0 &&
        (made.st_uid != old->st_uid || made.st_gid != old->st_gid) &&
        fchown(fd, old->st_uid, old->st_gid) != 0)
        ok = failed("cannot keep its owner and group (" + std::to_string(old->st_uid) + ":" +
                    std::to_string(old->st_gid) + "), nothing written");
    // fchmod after fchown: a change of owner clears the set-id bits.
    ok = ok && (fchmod(fd, mode) == 0 || failed("cannot keep its mode"));
    ok = ok && (fsync(fd) == 0 || failed("cannot write"));
    ok = (close(fd) == 0 || failed("cannot write")) && ok;
    ok = ok && (rename(temp_name, path.c_str()) == 0 || failed("cannot rename the new file over it"));
    if (!ok) {
        error = path + ": " + step;
        return false; // the guard removes the temporary file
    }
    temp_exists = 0;
    // The rename itself is on the disk once the directory is.
    const int dir = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        fsync(dir);
        close(dir);
    }
    return true;
}

} // namespace

bool safe_write(const std::string &target, std::string_view data, std::string &error)
{
    if (target.empty()) {
        error = "the output file name is empty";
        return false;
    }
    std::string path;
    if (!follow_links(target, path, error))
        return false;
    struct stat st {};
    if (stat(path.c_str(), &st) != 0) {
        if (errno != ENOENT) {
            error = path + ": " + why(errno);
            return false;
        }
        return replace_regular(path, nullptr, data, error);
    }
    if (S_ISDIR(st.st_mode)) {
        error = path + ": is a directory";
        return false;
    }
    if (!S_ISREG(st.st_mode))
        return write_through(path, st, data, error);
    return replace_regular(path, &st, data, error);
}

} // namespace cfgmsg

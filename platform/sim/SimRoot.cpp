#include "SimRoot.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "SimKeyData.h"
#include "SimProductionTests.h"

namespace fs = std::filesystem;

namespace sim {

namespace {

constexpr int kMaxLinkHops = 40;

// A TV path as components relative to the root ("." and empty parts dropped; ".."
// kept for the kernel, which stops it at the root).
std::vector<std::string> Components(const std::string& path) {
    std::vector<std::string> parts;
    std::istringstream in(path);
    for (std::string part; std::getline(in, part, '/');) {
        if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
    }
    return parts;
}

std::string Join(const std::vector<std::string>& parts, size_t count) {
    std::string out;
    for (size_t i = 0; i < count && i < parts.size(); ++i) {
        out += (out.empty() ? "" : "/") + parts[i];
    }
    return out;
}

// openat2's RESOLVE_IN_ROOT for a kernel or emulator without it (qemu-user 7.2 runs
// the ARM suite): one component at a time with O_NOFOLLOW, ".." stopping at the
// root, every link's text resolved again from the root (absolute) or from its folder.
// The descriptor or -errno.
int OpenInRootByParts(int rootFd, const std::string& relative, int flags, mode_t mode) {
    std::vector<std::string> todo = Components(relative);
    std::reverse(todo.begin(), todo.end());  // the next component at the back
    std::vector<int> dirs;                   // the folders walked, below the root
    const auto current = [&] { return dirs.empty() ? rootFd : dirs.back(); };
    const auto done = [&](int result) {
        for (const int fd : dirs) {
            ::close(fd);
        }
        return result;
    };
    int hops = 0;
    while (!todo.empty()) {
        const std::string part = todo.back();
        todo.pop_back();
        if (part == "..") {
            if (!dirs.empty()) {
                ::close(dirs.back());
                dirs.pop_back();
            }
            continue;
        }
        struct stat st {};
        const bool exists = ::fstatat(current(), part.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0;
        if (exists && S_ISLNK(st.st_mode)) {
            if (++hops > kMaxLinkHops) {
                return done(-ELOOP);
            }
            char target[4096];
            const ssize_t n = ::readlinkat(current(), part.c_str(), target, sizeof(target) - 1);
            if (n < 0) {
                return done(-errno);
            }
            target[n] = '\0';
            if (target[0] == '/') {
                done(0);
                dirs.clear();
            }
            std::vector<std::string> more = Components(target);
            todo.insert(todo.end(), more.rbegin(), more.rend());
            continue;
        }
        if (todo.empty()) {
            const int fd = ::openat(current(), part.c_str(), flags | O_NOFOLLOW, mode);
            return done(fd < 0 ? -errno : fd);
        }
        const int dir =
            ::openat(current(), part.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (dir < 0) {
            return done(-errno);
        }
        dirs.push_back(dir);
    }
    const int fd = ::openat(current(), ".", flags, mode);
    return done(fd < 0 ? -errno : fd);
}

std::string FdPath(int fd) {
    char buf[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(fd);
    const ssize_t n = ::readlink(link.c_str(), buf, sizeof(buf) - 1);
    return n > 0 ? std::string(buf, static_cast<size_t>(n)) : std::string();
}

class Fd {
public:
    explicit Fd(int fd) : m_fd(fd) {}
    ~Fd() {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    int get() const { return m_fd; }
    bool ok() const { return m_fd >= 0; }

private:
    int m_fd;
};

// The names in the folder fd (a descriptor of its own is taken), "." and ".." left
// out. False when the folder cannot be read to its end: a folder seen as empty
// would let a wipe report success with everything still there.
bool ListFolder(int fd, std::vector<std::string>& names) {
    names.clear();
    DIR* list = ::fdopendir(::dup(fd));
    if (list == nullptr) {
        return false;
    }
    ::rewinddir(list);  // the duplicate shares the offset of a folder read before
    errno = 0;
    while (const dirent* entry = ::readdir(list)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
        errno = 0;
    }
    const bool complete = errno == 0;
    ::closedir(list);
    return complete;
}

// Removes the entry name of the folder dirFd; a link is removed, never followed.
bool RemoveAt(int dirFd, const std::string& name) {
    struct stat st {};
    if (::fstatat(dirFd, name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT;
    }
    if (!S_ISDIR(st.st_mode)) {
        return ::unlinkat(dirFd, name.c_str(), 0) == 0;
    }
    const int sub = ::openat(dirFd, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (sub < 0) {
        return false;
    }
    const Fd folder(sub);
    std::vector<std::string> names;
    bool ok = ListFolder(folder.get(), names);
    for (const auto& child : names) {
        ok = RemoveAt(folder.get(), child) && ok;
    }
    return ::unlinkat(dirFd, name.c_str(), AT_REMOVEDIR) == 0 && ok;
}

}  // namespace

Root::Root(const std::string& folder) {
    if (folder.empty()) {
        std::string pattern = (fs::temp_directory_path() / "factory-set-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("cannot create a temporary root folder");
        }
        m_folder = fs::canonical(pattern);
        m_temporary = true;
    } else {
        fs::create_directories(folder);
        m_folder = fs::canonical(folder);
    }
    m_rootFd = ::open(m_folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (m_rootFd < 0) {
        throw std::runtime_error("cannot open the root folder " + m_folder.string());
    }
    for (const char* dir : {"/ciplus/", "/OAD/", "/Customer/", "/applications/", "/tmp/"}) {
        MakeParents(dir, nullptr);
    }
    // The factory wrote the key files before the set left the line.
    InstallDemoKeyFiles(m_folder);
    InstallDemoProductionFiles(m_folder);
}

Root::~Root() {
    if (m_rootFd >= 0) {
        ::close(m_rootFd);
    }
}

int Root::Open(const std::string& tvPath, int flags, mode_t mode) const {
    open_how how{};
    how.flags = static_cast<uint64_t>(flags | O_CLOEXEC);
    how.mode = (flags & O_CREAT) != 0 ? mode : 0;
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    std::string relative = Join(Components(tvPath), SIZE_MAX);
    if (relative.empty()) {
        relative = ".";
    }
    // VQ27_SIM_NO_OPENAT2 takes the path of a system without openat2 (its tests).
    static const bool noOpenat2 = std::getenv("VQ27_SIM_NO_OPENAT2") != nullptr;
    const long fd = noOpenat2
                        ? (errno = ENOSYS, -1L)
                        : ::syscall(SYS_openat2, m_rootFd, relative.c_str(), &how, sizeof(how));
    if (fd < 0 && errno == ENOSYS) {
        return OpenInRootByParts(m_rootFd, relative, flags | O_CLOEXEC, how.mode);
    }
    return fd < 0 ? -errno : static_cast<int>(fd);
}

std::string Root::Resolve(const std::string& relative, int depth) const {
    const std::vector<std::string> parts = Components(relative);
    if (parts.empty()) {
        return m_folder.string();
    }
    {
        const Fd fd(Open(relative, O_PATH));
        if (fd.ok()) {
            const std::string host = FdPath(fd.get());
            if (!host.empty()) {
                return host;
            }
        }
    }
    // Missing: the nearest existing folder above, then the rest as named. A
    // dangling link as the last part leads where it points, inside the root.
    const std::string parent = Join(parts, parts.size() - 1);
    const std::string& name = parts.back();
    const std::string parentHost = Resolve(parent, depth);
    if (name == "..") {
        return parentHost == m_folder.string() ? parentHost
                                               : fs::path(parentHost).parent_path().string();
    }
    const Fd dir(Open(parent, O_PATH | O_DIRECTORY));
    if (dir.ok() && depth < kMaxLinkHops) {
        char target[4096];
        const ssize_t n = ::readlinkat(dir.get(), name.c_str(), target, sizeof(target) - 1);
        if (n > 0) {
            const std::string to(target, static_cast<size_t>(n));
            return Resolve(to[0] == '/' ? to : parent + "/" + to, depth + 1);
        }
    }
    return parentHost + "/" + name;
}

std::string Root::Map(const std::string& tvPath) const {
    std::string host = Resolve(tvPath, 0);
    if (!tvPath.empty() && tvPath.back() == '/' && host != m_folder.string()) {
        host += '/';
    }
    return host;
}

std::string Root::MapForOpen(const std::string& tvPath) const {
    const Fd fd(Open(tvPath, O_PATH));
    struct stat st {};
    if (fd.ok() && ::fstat(fd.get(), &st) == 0 && !S_ISREG(st.st_mode) && !S_ISDIR(st.st_mode)) {
        return "";
    }
    return Map(tvPath);
}

bool Root::MakeParents(const std::string& tvPath, std::string* error) const {
    const std::vector<std::string> parts = Components(tvPath);
    const bool wholeIsFolder = !tvPath.empty() && tvPath.back() == '/';
    const size_t folders = wholeIsFolder ? parts.size() : (parts.empty() ? 0 : parts.size() - 1);
    for (size_t i = 1; i <= folders; ++i) {
        const std::string prefix = Join(parts, i);
        const Fd existing(Open(prefix, O_PATH | O_DIRECTORY));
        if (existing.ok()) {
            continue;
        }
        const Fd parent(Open(Join(parts, i - 1), O_PATH | O_DIRECTORY));
        if (!parent.ok() ||
            (::mkdirat(parent.get(), parts[i - 1].c_str(), 0755) != 0 && errno != EEXIST)) {
            if (error != nullptr) {
                *error = "cannot make the folder /" + prefix + ": " + std::strerror(errno);
            }
            return false;
        }
    }
    return true;
}

bool Root::WriteFile(const std::string& tvPath, const std::string& bytes,
                     std::string* error) const {
    std::string reason;
    if (!MakeParents(tvPath, &reason)) {
        if (error != nullptr) {
            *error = reason;
        }
        return false;
    }
    // O_NONBLOCK: a FIFO in the way fails at once (ENXIO) instead of blocking.
    const Fd fd(Open(tvPath, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK, 0644));
    struct stat st {};
    bool ok = fd.ok() && ::fstat(fd.get(), &st) == 0 && S_ISREG(st.st_mode);
    int cause = fd.ok() ? (ok ? 0 : EINVAL) : -fd.get();
    for (size_t done = 0; ok && done < bytes.size();) {
        const ssize_t n = ::write(fd.get(), bytes.data() + done, bytes.size() - done);
        if (n <= 0) {
            ok = false;
            cause = errno;
            break;
        }
        done += static_cast<size_t>(n);
    }
    if (!ok && error != nullptr) {
        *error = "cannot write " + tvPath + ": " + std::strerror(cause);
    }
    return ok;
}

std::string Root::ReadFile(const std::string& tvPath) const {
    const Fd fd(Open(tvPath, O_RDONLY | O_NONBLOCK));
    struct stat st {};
    if (!fd.ok() || ::fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode)) {
        return "";
    }
    std::string out;
    char buf[65536];
    for (ssize_t n; (n = ::read(fd.get(), buf, sizeof(buf))) > 0;) {
        out.append(buf, static_cast<size_t>(n));
    }
    return out;
}

bool Root::Exists(const std::string& tvPath) const { return Fd(Open(tvPath, O_PATH)).ok(); }

namespace {
std::vector<std::string> Words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    std::string w;
    while (in >> w) {
        words.push_back(w);
    }
    return words;
}
}  // namespace

// Removes the entry a TV path names inside its folder: a link goes, its target stays.
bool Root::RemovePath(const std::string& tvPath, bool recursive, bool force) const {
    const std::vector<std::string> parts = Components(tvPath);
    if (parts.empty() || parts.back() == "..") {
        return false;  // never the root itself
    }
    const Fd dir(Open(Join(parts, parts.size() - 1), O_PATH | O_DIRECTORY));
    struct stat st {};
    if (!dir.ok() || ::fstatat(dir.get(), parts.back().c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) {
        return force;
    }
    if (S_ISDIR(st.st_mode) && !recursive) {
        return force;  // rm -f leaves folders alone; plain rm refuses them
    }
    // unlinkat needs a real descriptor of the folder, not an O_PATH one.
    const Fd real(Open(Join(parts, parts.size() - 1), O_RDONLY | O_DIRECTORY));
    return real.ok() && RemoveAt(real.get(), parts.back());
}

bool Root::RemoveContents(const std::string& tvPath) const {
    const Fd dir(Open(tvPath, O_RDONLY | O_DIRECTORY));
    if (!dir.ok()) {
        return true;  // rm -rf of a missing folder's contents does nothing, successfully
    }
    std::vector<std::string> names;
    bool ok = ListFolder(dir.get(), names);
    // The shell's `*` matches no name that begins with a dot.
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const std::string& name) { return name[0] == '.'; }),
                names.end());
    for (const auto& name : names) {
        ok = RemoveAt(dir.get(), name) && ok;
    }
    return ok;
}

bool Root::Touch(const std::string& tvPath) const {
    if (!MakeParents(tvPath, nullptr)) {
        return false;
    }
    const Fd fd(Open(tvPath, O_WRONLY | O_CREAT | O_NONBLOCK, 0644));
    return fd.ok() || Exists(tvPath);
}

bool Root::Copy(const std::string& from, const std::string& to) const {
    const Fd in(Open(from, O_RDONLY | O_NONBLOCK));
    struct stat st {};
    if (!in.ok() || ::fstat(in.get(), &st) != 0 || !S_ISREG(st.st_mode)) {
        return false;
    }
    const Fd out(Open(to, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK, 0644));
    struct stat outSt {};
    if (!out.ok() || ::fstat(out.get(), &outSt) != 0 || !S_ISREG(outSt.st_mode)) {
        return false;
    }
    char buf[65536];
    for (ssize_t n; (n = ::read(in.get(), buf, sizeof(buf))) > 0;) {
        for (ssize_t done = 0; done < n;) {
            const ssize_t w = ::write(out.get(), buf + done, static_cast<size_t>(n - done));
            if (w <= 0) {
                return false;
            }
            done += w;
        }
    }
    return true;
}

// chmod [-R] [-f] MODE PATH, options before or after the mode as GNU chmod takes them.
bool Root::Chmod(const std::vector<std::string>& w) const {
    bool recursive = false;
    std::vector<std::string> operands;
    for (size_t i = 1; i < w.size(); ++i) {
        if (w[i].size() > 1 && w[i][0] == '-') {
            for (size_t k = 1; k < w[i].size(); ++k) {
                if (w[i][k] == 'R') {
                    recursive = true;
                } else if (w[i][k] != 'f') {
                    return false;
                }
            }
        } else {
            operands.push_back(w[i]);
        }
    }
    if (operands.size() != 2) {
        return false;
    }
    char* end = nullptr;
    const long parsed = std::strtol(operands[0].c_str(), &end, 8);
    if (end == nullptr || *end != '\0' || operands[0].empty()) {
        return false;
    }
    const mode_t mode = static_cast<mode_t>(parsed) & 07777;
    const Fd target(Open(operands[1], O_PATH));
    if (!target.ok()) {
        return false;
    }
    // An O_PATH descriptor is changed through its /proc name; links below a folder
    // are left alone, as chmod -R does.
    const auto change = [mode](int fd) {
        return ::chmod(("/proc/self/fd/" + std::to_string(fd)).c_str(), mode) == 0;
    };
    struct stat st {};
    bool ok = change(target.get()) && ::fstat(target.get(), &st) == 0;
    if (!ok || !recursive || !S_ISDIR(st.st_mode)) {
        return ok;
    }
    std::vector<std::string> pending = {operands[1]};
    while (!pending.empty()) {
        const std::string folder = pending.back();
        pending.pop_back();
        const Fd dir(Open(folder, O_RDONLY | O_DIRECTORY));
        std::vector<std::string> names;
        if (!dir.ok() || !ListFolder(dir.get(), names)) {
            return false;
        }
        for (const auto& name : names) {
            struct stat child {};
            if (::fstatat(dir.get(), name.c_str(), &child, AT_SYMLINK_NOFOLLOW) != 0 ||
                S_ISLNK(child.st_mode)) {
                continue;
            }
            const Fd fd(::openat(dir.get(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
            ok = fd.ok() && change(fd.get()) && ok;
            if (S_ISDIR(child.st_mode)) {
                pending.push_back(folder + "/" + name);
            }
        }
    }
    return ok;
}

bool Root::RunCommand(const std::string& line) const {
    const std::vector<std::string> w = Words(line);
    if (w.empty()) {
        return false;
    }
    if (w[0] == "sync" && w.size() == 1) {
        return true;
    }
    if (w[0] == "rm" && w.size() >= 3 && (w[1] == "-f" || w[1] == "-rf")) {
        const bool recursive = w[1] == "-rf";
        bool ok = true;
        for (size_t i = 2; i < w.size(); ++i) {
            const std::string& target = w[i];
            const bool contents =
                target.size() >= 2 && target.compare(target.size() - 2, 2, "/*") == 0;
            if (contents && recursive) {
                ok = RemoveContents(target.substr(0, target.size() - 2)) && ok;
            } else if (target.find('*') != std::string::npos) {
                return false;
            } else {
                ok = RemovePath(target, recursive, true) && ok;
            }
        }
        return ok;
    }
    if (w[0] == "rm" && w.size() >= 2 && w[1][0] != '-') {
        // Plain rm: files and links only, and a missing one is an error, as on the set.
        bool all = true;
        for (size_t i = 1; i < w.size(); ++i) {
            const bool removed =
                w[i].find('*') == std::string::npos && RemovePath(w[i], false, false);
            all = removed && all;
        }
        return all;
    }
    if (w[0] == "touch" && w.size() >= 2) {
        bool ok = true;
        for (size_t i = 1; i < w.size(); ++i) {
            ok = Touch(w[i]) && ok;
        }
        return ok;
    }
    if (w[0] == "chmod") {
        return Chmod(w);
    }
    if (w[0] == "cp" && w.size() == 3) {
        return Copy(w[1], w[2]);
    }
    return false;
}

void Root::Remove() {
    if (m_temporary) {
        std::error_code ec;
        fs::remove_all(m_folder, ec);
    }
}

}  // namespace sim

// The simulated set's file system: every absolute TV path lives under one host
// folder, resolved as for a process chrooted into it: ".." stops at the root and
// every symbolic link, absolute or relative, resolves inside it. The kernel does
// the resolving (openat2 with RESOLVE_IN_ROOT on a descriptor of the root), for
// every open, create, remove, chmod and copy.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace sim {

class Root {
public:
    // An empty folder name makes a fresh temporary root, removed by Remove().
    explicit Root(const std::string& folder);
    ~Root();
    Root(const Root&) = delete;
    Root& operator=(const Root&) = delete;

    const std::filesystem::path& Folder() const { return m_folder; }
    bool IsTemporary() const { return m_temporary; }
    // The host path of a TV path, resolved inside the root (links followed, also
    // a dangling last one); a place that does not exist yet maps below its nearest
    // existing folder.
    std::string Map(const std::string& tvPath) const;
    // Map for opening: "" when the TV path names something that is neither a file
    // nor a folder (a FIFO or a device would block or misbehave), like a missing file.
    std::string MapForOpen(const std::string& tvPath) const;

    // Test and set-up helpers, all in TV paths. WriteFile makes missing folders;
    // false (with the reason in *error) when the file cannot be written.
    bool WriteFile(const std::string& tvPath, const std::string& bytes,
                   std::string* error = nullptr) const;
    // The bytes of a regular file; "" for anything else.
    std::string ReadFile(const std::string& tvPath) const;
    bool Exists(const std::string& tvPath) const;

    // The shell forms the library uses, carried out inside the root. Returns
    // false for any other line and when the command fails.
    bool RunCommand(const std::string& line) const;

    void Remove();

    // openat2 with RESOLVE_IN_ROOT on the root; the descriptor or -errno.
    int Open(const std::string& tvPath, int flags, mode_t mode = 0) const;

private:
    std::string Resolve(const std::string& relative, int depth) const;
    bool MakeParents(const std::string& tvPath, std::string* error) const;
    bool RemovePath(const std::string& tvPath, bool recursive, bool force) const;
    bool RemoveContents(const std::string& tvPath) const;
    bool Touch(const std::string& tvPath) const;
    bool Copy(const std::string& from, const std::string& to) const;
    bool Chmod(const std::vector<std::string>& words) const;

    std::filesystem::path m_folder;
    int m_rootFd = -1;
    bool m_temporary = false;
};

}  // namespace sim

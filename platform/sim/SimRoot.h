// The simulated set's file system: every absolute TV path lives under one host
// folder, and nothing the set does reaches outside it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace sim {

class Root {
public:
    // An empty folder name makes a fresh temporary root, removed by Remove().
    explicit Root(const std::string& folder);

    const std::filesystem::path& Folder() const { return m_folder; }
    bool IsTemporary() const { return m_temporary; }
    // The host path of a TV path; ".." never climbs above the root.
    std::string Map(const std::string& tvPath) const;

    // Test and set-up helpers, all in TV paths.
    void WriteFile(const std::string& tvPath, const std::string& bytes) const;
    std::string ReadFile(const std::string& tvPath) const;
    bool Exists(const std::string& tvPath) const;

    // The shell forms the library uses, carried out inside the root. Returns
    // false (and does nothing) for any other line.
    bool RunCommand(const std::string& line) const;

    void Remove();

private:
    bool Chmod(const std::vector<std::string>& words) const;

    std::filesystem::path m_folder;
    bool m_temporary = false;
};

}  // namespace sim

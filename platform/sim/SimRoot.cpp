#include "SimRoot.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "SimKeyData.h"
#include "SimProductionTests.h"

namespace fs = std::filesystem;

namespace sim {

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
    for (const char* dir : {"ciplus", "OAD", "Customer", "applications", "tmp"}) {
        fs::create_directories(m_folder / dir);
    }
    // The factory wrote the key files before the set left the line.
    InstallDemoKeyFiles(m_folder);
    InstallDemoProductionFiles(m_folder);
}

std::string Root::Map(const std::string& tvPath) const {
    // Resolve "." and ".." within the set's own tree, so the result stays inside.
    std::vector<std::string> parts;
    std::istringstream in(tvPath);
    std::string part;
    while (std::getline(in, part, '/')) {
        if (part.empty() || part == ".") {
            continue;
        }
        if (part == "..") {
            if (!parts.empty()) {
                parts.pop_back();
            }
            continue;
        }
        parts.push_back(part);
    }
    fs::path out = m_folder;
    for (const auto& p : parts) {
        out /= p;
        if (LeavesRoot(out)) {
            // A link in a user's root that points elsewhere: the path maps to a
            // place that does not exist, so every open and write through it fails.
            return (m_folder / ".outside-root" / p).string();
        }
    }
    std::string text = out.string();
    if (!tvPath.empty() && tvPath.back() == '/' && !parts.empty()) {
        text += '/';
    }
    return text;
}

bool Root::LeavesRoot(const fs::path& hostPath) const {
    std::error_code ec;
    fs::path target = hostPath;
    // Follow the chain by hand: a dangling link still points somewhere.
    for (int hops = 0; fs::is_symlink(target, ec); ++hops) {
        const fs::path next = fs::read_symlink(target, ec);
        if (ec || hops == 40) {
            return true;
        }
        target = next.is_relative() ? target.parent_path() / next : next;
        target = fs::weakly_canonical(target, ec);
        if (ec) {
            return true;
        }
    }
    if (target == hostPath) {
        return false;
    }
    const fs::path rel = target.lexically_relative(m_folder);
    return rel.empty() || *rel.begin() == "..";
}

void Root::WriteFile(const std::string& tvPath, const std::string& bytes) const {
    const fs::path host = Map(tvPath);
    fs::create_directories(host.parent_path());
    std::ofstream out(host, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string Root::ReadFile(const std::string& tvPath) const {
    std::ifstream in(Map(tvPath), std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

bool Root::Exists(const std::string& tvPath) const {
    std::error_code ec;
    return fs::exists(Map(tvPath), ec);
}

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
    std::error_code ec;
    if (operands.size() != 2) {
        return false;
    }
    char* end = nullptr;
    const long mode = std::strtol(operands[0].c_str(), &end, 8);
    const fs::path target = Map(operands[1]);
    if (end == nullptr || *end != '\0' || !fs::exists(target, ec)) {
        return false;
    }
    const fs::perms perms = static_cast<fs::perms>(mode) & fs::perms::mask;
    // A link may point out of the root; the set's files are changed, links are not followed.
    const auto change = [perms](const fs::path& p, std::error_code& err) {
        if (!fs::is_symlink(fs::symlink_status(p, err))) {
            fs::permissions(p, perms, err);
        }
    };
    change(target, ec);
    if (recursive && !ec && fs::is_directory(fs::symlink_status(target, ec))) {
        for (const auto& entry : fs::recursive_directory_iterator(target, ec)) {
            change(entry.path(), ec);
        }
    }
    return !ec;
}

bool Root::RunCommand(const std::string& line) const {
    const std::vector<std::string> w = Words(line);
    std::error_code ec;
    if (w.empty()) {
        return false;
    }
    if (w[0] == "sync" && w.size() == 1) {
        return true;
    }
    if (w[0] == "rm" && w.size() >= 3 && (w[1] == "-f" || w[1] == "-rf")) {
        for (size_t i = 2; i < w.size(); ++i) {
            const std::string& target = w[i];
            const bool contents =
                target.size() >= 2 && target.compare(target.size() - 2, 2, "/*") == 0;
            if (contents) {
                if (w[1] != "-rf") {
                    return false;
                }
                const fs::path dir = Map(target.substr(0, target.size() - 2));
                if (fs::is_directory(dir, ec)) {
                    for (const auto& entry : fs::directory_iterator(dir, ec)) {
                        fs::remove_all(entry.path(), ec);
                    }
                }
            } else if (target.find('*') != std::string::npos) {
                return false;
            } else if (w[1] == "-rf") {
                fs::remove_all(Map(target), ec);
            } else if (!fs::is_directory(Map(target), ec)) {
                fs::remove(Map(target), ec);
            }
        }
        return true;
    }
    if (w[0] == "rm" && w.size() >= 2 && w[1][0] != '-') {
        // Plain rm: files only, and a missing one is an error, as on the set.
        bool all = true;
        for (size_t i = 1; i < w.size(); ++i) {
            const fs::path p = Map(w[i]);
            const fs::file_status st = fs::symlink_status(p, ec);
            if (w[i].find('*') != std::string::npos || !fs::exists(st) || fs::is_directory(st)) {
                all = false;
                continue;
            }
            fs::remove(p, ec);
        }
        return all;
    }
    if (w[0] == "touch" && w.size() >= 2) {
        for (size_t i = 1; i < w.size(); ++i) {
            const fs::path p = Map(w[i]);
            if (!fs::exists(p, ec)) {
                fs::create_directories(p.parent_path(), ec);
                std::ofstream touch(p, std::ios::app);
            }
        }
        return true;
    }
    if (w[0] == "chmod") {
        return Chmod(w);
    }
    if (w[0] == "cp" && w.size() == 3) {
        fs::copy_file(Map(w[1]), Map(w[2]), fs::copy_options::overwrite_existing, ec);
        return !ec;
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

#include "SetFields.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>

#include "AreaFields.h"
#include "Names.h"
#include "SimKeys.h"
#include "SimSet.h"

namespace factorysim {

namespace {

// A file of the set, given by its TV path: key files, marker files, pages.
Field FileField() {
    return {"file", "tv path", "a file under the set's root (value with \\n, \\xHH escapes)",
            [](const std::string& path, std::string& value) {
                sim::Root& root = sim::Set::Instance().GetRoot();
                if (!root.Exists(path)) {
                    return std::string("no such file: ") + path;
                }
                value = Escape(root.ReadFile(path));
                return std::string();
            },
            [](const std::string& path, const std::string& value) {
                if (path.empty() || path[0] != '/') {
                    return std::string("a TV path starts with /");
                }
                std::string error;
                sim::Set::Instance().GetRoot().WriteFile(path, Unescape(value), &error);
                return error;
            }};
}

Field KeyManagerField() {
    return {"key-manager", nullptr, "1 when the set has a key manager, 0 without one",
            [](const std::string&, std::string& value) {
                value = sim::Set::Instance().Get<sim::KeyState>().present ? "1" : "0";
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                bool flag = false;
                std::string error = ParseFlag(value, flag);
                if (error.empty()) {
                    sim::Set::Instance().Get<sim::KeyState>().present = flag;
                }
                return error;
            }};
}

}  // namespace

std::string ParseByte(const std::string& text, unsigned char& out) {
    const auto number = ParseNumber(text);
    if (!number || *number > 255) {
        return "not a byte (0-255 or 0x00-0xFF): " + text;
    }
    out = static_cast<unsigned char>(*number);
    return "";
}

std::string ParseFlag(const std::string& text, bool& out) {
    if (text == "1" || text == "on" || text == "true") {
        out = true;
    } else if (text == "0" || text == "off" || text == "false") {
        out = false;
    } else {
        return "not 0/1 (or on/off): " + text;
    }
    return "";
}

std::string Unescape(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char c = text[++i];
        if (c == 'n') {
            out += '\n';
        } else if (c == 't') {
            out += '\t';
        } else if (c == 'x' && i + 2 < text.size()) {
            const auto byte = ParseNumber("0x" + text.substr(i + 1, 2));
            if (byte) {
                out += static_cast<char>(*byte);
                i += 2;
            } else {
                out += "\\x";
            }
        } else {
            out += c;
        }
    }
    return out;
}

std::string Escape(const std::string& bytes) {
    std::string out;
    for (unsigned char c : bytes) {
        if (c == '\n') {
            out += "\\n";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c == '\\') {
            out += "\\\\";
        } else if (c < 0x20 || c >= 0x7F) {
            char buf[8];
            std::snprintf(buf, sizeof(buf), "\\x%02X", c);
            out += buf;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

SetFields::SetFields() : m_fields(AreaFields()) {
    m_fields.push_back(KeyManagerField());
    m_fields.push_back(FileField());
    // Page families list their fields in files of their own; a name given twice would
    // make one of them unreachable, so factory-sim refuses to start with it.
    std::set<std::string> names;
    for (const auto& f : m_fields) {
        if (!names.insert(f.name).second) {
            std::fprintf(stderr, "factory-sim: the set field %s is defined twice\n", f.name);
            std::abort();
        }
    }
}

std::string SetFields::Find(const std::string& name, const Field*& field, std::string& arg) const {
    std::string base = name;
    bool indexed = false;
    const auto open = name.find('[');
    if (open != std::string::npos) {
        if (name.back() != ']') {
            return "bad field name (expected name[...]): " + name;
        }
        base = name.substr(0, open);
        arg = name.substr(open + 1, name.size() - open - 2);
        indexed = true;
    }
    for (const auto& f : m_fields) {
        if (base != f.name) {
            continue;
        }
        if ((f.arg != nullptr) != indexed || (indexed && arg.empty())) {
            return f.arg ? "field " + base + " needs [" + f.arg + "]"
                         : "field " + base + " takes no [...]";
        }
        field = &f;
        return "";
    }
    return "unknown field: " + base + " (try: help set)";
}

std::string SetFields::Set(const std::string& name, const std::string& value) const {
    const Field* field = nullptr;
    std::string arg;
    std::string error = Find(name, field, arg);
    return error.empty() ? field->set(arg, value) : error;
}

std::string SetFields::Get(const std::string& name, std::string& value) const {
    const Field* field = nullptr;
    std::string arg;
    std::string error = Find(name, field, arg);
    return error.empty() ? field->get(arg, value) : error;
}

std::string SetFields::LoadText(const std::string& text, const std::string& origin) const {
    struct Line {
        int number;
        std::string name;
        std::string value;
        bool hadValue = false;
        std::string oldValue;
    };
    std::vector<Line> lines;
    std::map<std::string, int> seen;
    std::istringstream in(text);
    std::string line;
    const auto at = [&origin](int number, const std::string& error) {
        return origin + ":" + std::to_string(number) + ": " + error;
    };
    // Every line is checked before any is applied: a bad file changes nothing.
    for (int number = 1; std::getline(in, line); ++number) {
        const std::string content = Trim(line);
        if (content.empty() || content[0] == '#') {
            continue;
        }
        const auto eq = content.find('=');
        if (eq == std::string::npos) {
            return at(number, "expected 'field = value'");
        }
        const std::string name = Trim(content.substr(0, eq));
        if (name.empty()) {
            return at(number, "missing field name");
        }
        const Field* field = nullptr;
        std::string arg;
        if (const std::string error = Find(name, field, arg); !error.empty()) {
            return at(number, error);
        }
        if (const auto previous = seen.find(name); previous != seen.end()) {
            return at(number, name + " is already set on line " + std::to_string(previous->second));
        }
        seen[name] = number;
        lines.push_back({number, name, Trim(content.substr(eq + 1)), false, ""});
    }
    // Values are checked by setting them; the first refused one undoes the others.
    for (size_t i = 0; i < lines.size(); ++i) {
        Line& l = lines[i];
        l.hadValue = Get(l.name, l.oldValue).empty();
        const std::string error = Set(l.name, l.value);
        if (error.empty()) {
            continue;
        }
        while (i-- > 0) {
            const Line& done = lines[i];
            if (done.hadValue) {
                Set(done.name, done.oldValue);
            } else if (done.name.rfind("file[", 0) == 0) {
                sim::Set::Instance().GetRoot().RunCommand(
                    "rm -f " + done.name.substr(5, done.name.size() - 6));
            }
        }
        return at(l.number, error);
    }
    return "";
}

const char* SetFields::DemoSet() {
    return R"(# factory-sim's demo set: a 55" digital set on the line, M-mode off
model-id = 0x31
sw-version = VQ27.00.1143.21
mboot-version = MB1.06.114
mac = 00:1e:b8:4c:2a:f1
wlan-mac = 70:5a:b6:12:c3:de
serial = VQ2611A0004812
input-source = 28
m-mode = 0
key-manager = 1
)";
}

}  // namespace factorysim

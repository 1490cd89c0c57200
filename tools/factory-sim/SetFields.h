// The simulated set's named fields: one table serves the console's set/get and the
// --set file, each field a getter/setter pair over a sim area.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace factorysim {

struct Field {
    const char* name;  // "model-id", or "factory" for factory[<item>]
    const char* arg;   // null for a plain field, else what goes in the brackets
    const char* help;
    // Both run on the event thread and return an error text, empty on success.
    std::function<std::string(const std::string& arg, std::string& value)> get;
    std::function<std::string(const std::string& arg, const std::string& value)> set;
};

class SetFields {
public:
    SetFields();

    const std::vector<Field>& All() const { return m_fields; }
    // "name" or "name[arg]"; the error says what is wrong with the name.
    std::string Set(const std::string& name, const std::string& value) const;
    std::string Get(const std::string& name, std::string& value) const;

    // "field = value" lines, # comments and blank lines. Stops at the first bad
    // line; the error reads "<origin>:<line>: <reason>".
    std::string LoadText(const std::string& text, const std::string& origin) const;

    // The set factory-sim starts with when no --set file is given.
    static const char* DemoSet();

private:
    std::string Find(const std::string& name, const Field*& field, std::string& arg) const;
    std::vector<Field> m_fields;
};

// Value helpers shared by the field definitions.
std::string ParseByte(const std::string& text, unsigned char& out);
std::string ParseFlag(const std::string& text, bool& out);
// Backslash escapes \n, \t, \\ and \xHH in a value, and back for display.
std::string Unescape(const std::string& text);
std::string Escape(const std::string& bytes);

}  // namespace factorysim

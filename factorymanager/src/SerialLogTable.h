// The serial console's table of an information page: 168-column rules, rows of up
// to three label/value pairs in 28-wide left-adjusted cells.
#pragma once

#include <ostream>

class SerialLogTable {
public:
    static constexpr int kWidth = 168;
    static constexpr int kCell = 28;

    // Writes the opening rule.
    explicit SerialLogTable(std::ostream& out);
    // Writes the closing rule.
    ~SerialLogTable();
    SerialLogTable(const SerialLogTable&) = delete;
    SerialLogTable& operator=(const SerialLogTable&) = delete;

    // A 28-wide cell; a null text leaves it blank (the stream gets only the padding).
    SerialLogTable& Cell(const char* text);
    SerialLogTable& Cell(long value);
    // A label and its value.
    SerialLogTable& Pair(const char* label, const char* value) { return Cell(label).Cell(value); }
    // Text with no padding at all.
    SerialLogTable& Raw(const char* text);
    void EndRow();

private:
    void Rule();
    std::ostream& m_out;
};

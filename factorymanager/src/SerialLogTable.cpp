#include "SerialLogTable.h"

#include <iomanip>

SerialLogTable::SerialLogTable(std::ostream& out) : m_out(out) { Rule(); }

SerialLogTable::~SerialLogTable() { Rule(); }

void SerialLogTable::Rule() {
    m_out << std::setfill('-') << std::setw(kWidth) << "" << std::endl;
    m_out << std::setfill(' ') << std::left;
}

SerialLogTable& SerialLogTable::Cell(const char* text) {
    m_out << std::setw(kCell) << (text != nullptr ? text : "");
    return *this;
}

SerialLogTable& SerialLogTable::Cell(long value) {
    m_out << std::setw(kCell) << value;
    return *this;
}

SerialLogTable& SerialLogTable::Raw(const char* text) {
    if (text != nullptr) {
        m_out << text;
    }
    return *this;
}

void SerialLogTable::EndRow() { m_out << std::endl; }

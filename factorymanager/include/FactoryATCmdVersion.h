// The version record handed to the serial fixture's version check.
#pragma once

#include "MTypes.h"

constexpr unsigned int kATCmdVersionSize = 1230;

struct ST_ATCMD_VERSION {
    char raw[kATCmdVersionSize];
};
static_assert(sizeof(ST_ATCMD_VERSION) == kATCmdVersionSize, "the fixture reads 1230 bytes");

class FactoryManager;

// One fixed-width field of the record: the text of `format` with the row's value,
// cut at `width` without a terminator. A row takes its value from a text reader,
// or from a status reader shown as "OK" or "NG".
struct FactoryATCmdRow {
    unsigned short offset;
    unsigned short width;
    const char* format;
    const char* (FactoryManager::*text)();
    MAPI_U8 (FactoryManager::*status)();
};

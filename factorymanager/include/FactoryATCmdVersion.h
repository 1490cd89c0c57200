// The version record handed to the serial fixture's version check.
#pragma once

constexpr unsigned int kATCmdVersionSize = 1230;

struct ST_ATCMD_VERSION {
    char raw[kATCmdVersionSize];
};
static_assert(sizeof(ST_ATCMD_VERSION) == kATCmdVersionSize, "the fixture reads 1230 bytes");

// The platform's scan parameters of a digital tuner.
#pragma once

#include "MTypes.h"

class MW_DTV_ScanParam {
public:
    virtual ~MW_DTV_ScanParam() = default;
};

// Satellite scan parameters: 12 bytes on the set (the vtable and these fields).
class MW_DTV_ScanParam_DVBS : public MW_DTV_ScanParam {
public:
    MAPI_U16 u16SymbolRate = 0;
    MAPI_U8 u8Network = 0;   // 0: no network search
    MAPI_U8 u8ScanType = 0;  // 0: one transponder
    MAPI_U8 u8Blind = 0;     // 1: the tuner finds the exact frequency itself
    MAPI_U8 u8Polarity = 0;  // bit 0: horizontal
};

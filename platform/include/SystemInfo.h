// The platform's system information: model id, boot and picture-quality versions,
// secured state.
#pragma once

#include "MTypes.h"

class SystemInfo {
public:
    static SystemInfo* GetInstance();

    // The product's model id; the product's model tables are keyed by it.
    MAPI_U32 GetModelId();
    // Version texts owned by the platform; they stay valid for the process.
    const char* GetMbootVersion();
    MAPI_BOOL IsSoCSecured();
    const char* GetPQVersion();
    // Version of the picture-quality map of the given type (0 main, 2 ...).
    const char* GetQmapVersion(int type);
    // Whether the set has the advanced-sound option.
    MAPI_BOOL IsAudysseyEnable();
    // 0 on a set without a satellite tuner.
    MAPI_BOOL IsDVBSEnable();
};

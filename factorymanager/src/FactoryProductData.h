// Product data: which model name and which Vudu chassis code belong to a model id.
// A product build supplies its own FactoryProductData.cpp; the readers only walk
// these tables.
#pragma once

#include <cstddef>

#include "MTypes.h"

struct FactoryModelNameRow {
    MAPI_U8 u8ModelId;
    char szName[9];  // eight characters and the terminator
};

struct FactoryVuduChassisRow {
    MAPI_U32 u32ModelIds[4];  // unused slots are 0, never a model id
    char szChassis[9];
};

extern const FactoryModelNameRow g_stFactoryModelNames[];
extern const size_t g_nFactoryModelNames;
extern const FactoryVuduChassisRow g_stFactoryVuduChassis[];
extern const size_t g_nFactoryVuduChassis;

// The model name of a model id's low byte, or null when the table has no row.
const char* FactoryProductModelName(MAPI_U8 modelId);
// The Vudu chassis code of a (full) model id, or null when no row names it.
const char* FactoryProductVuduChassis(MAPI_U32 modelId);

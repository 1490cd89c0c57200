// Demo product data of the simulated set. The names are invented; a product build
// replaces this file with the maker's own tables, in the same shape.
#include "FactoryProductData.h"

// 31 rows. Model ids 58, 59, 77 and 78 have no row on this product and read as
// unnamed.
// clang-format off
const FactoryModelNameRow g_stFactoryModelNames[] = {
    {1, "QV24A101"},
    {2, "QV32A102"},
    {3, "QV40A103"},
    {8, "QV43A108"},
    {9, "QV50A109"},
    {16, "QV55A116"},
    {17, "QV65A117"},
    {18, "QV75A118"},
    {48, "QV24H248"},
    {49, "QV32H249"},
    {50, "QV40H250"},
    {51, "QV43H251"},
    {52, "QV50H252"},
    {53, "QV55H253"},
    {54, "QV65H254"},
    {55, "QV75H255"},
    {56, "QV24H256"},
    {57, "QV32H257"},
    {64, "QV40U464"},
    {65, "QV43U465"},
    {66, "QV50U466"},
    {67, "QV55U467"},
    {68, "QV65U468"},
    {69, "QV75U469"},
    {70, "QV24U470"},
    {71, "QV32U471"},
    {72, "QV40U472"},
    {73, "QV43U473"},
    {74, "QV50U474"},
    {75, "QV55U475"},
    {76, "QV65U476"},
};
// clang-format on
const size_t g_nFactoryModelNames =
    sizeof(g_stFactoryModelNames) / sizeof(g_stFactoryModelNames[0]);

// Each chassis serves two to four model ids.
// clang-format off
const FactoryVuduChassisRow g_stFactoryVuduChassis[] = {
    {{1, 2, 3, 0}, "VQCA1S24"},
    {{8, 9, 0, 0}, "VQCA1M43"},
    {{16, 17, 18, 0}, "VQCA1L55"},
    {{48, 50, 51, 0}, "VQCH2S32"},
    {{52, 54, 55, 0}, "VQCH2M43"},
    {{65, 66, 67, 68}, "VQCU4M50"},
    {{70, 71, 72, 73}, "VQCU4L65"},
};
// clang-format on
const size_t g_nFactoryVuduChassis =
    sizeof(g_stFactoryVuduChassis) / sizeof(g_stFactoryVuduChassis[0]);

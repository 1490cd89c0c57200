#include "ShipoutRegions.h"

namespace {

// The Australian page and key are spelt "Austraria" on the set's pages; the texts
// say "Australia". Both are kept as they are, the page knows them that way.
const ShipoutRegion kRegions[] = {
    {0, "USAShipout", "USA-Shipout", "Set region to USA : Writing", "Set region to USA : Finished",
     -1},
    {1, "CanadaShipout", "Canada-Shipout", "Set region to Canada : Writing",
     "Set region to Canada : Finished", -1},
    {2, "MexicoShipout", "Mexico-Shipout", "Set region to Mexico : Writing",
     "Set region to Mexico : Finished", -1},
    {16, "UKShipout", "UK-Shipout", "UK Writing", "UK OK", 1},
    {17, "FranceShipout", "France-Shipout", "France Writing", "France OK", 3},
    {18, "ContinentalShipout", "Continental-Shipout", "Continental Writing", "Continental OK", 0},
    {19, "RussiaShipout", "Russia-Shipout", "Russia Writing", "Russia OK", 2},
    {20, "NordicShipout", "Nordic-Shipout", "Nordic Writing", "Nordic OK", 4},
    {kShipoutAustralia, "AustrariaShipout", "Austraria-Shipout", "Australia Shipment Writing",
     "Australia OK", 6},
};

}  // namespace

const ShipoutRegion* FindShipoutRegion(MAPI_U8 code) {
    for (const ShipoutRegion& region : kRegions) {
        if (region.code == code) {
            return &region;
        }
    }
    return nullptr;
}

#include "GenreTables.h"

namespace GenreTables {

namespace {

// Who a rule applies to.
enum class Scope { Any, Satellite, TerrestrialA, TerrestrialB, TerrestrialOther };

bool Applies(Scope scope, Reception r) {
    const bool a = r.country == kCountryA;
    const bool b = r.country == kCountryB;
    switch (scope) {
        case Scope::Any:
            return true;
        case Scope::Satellite:
            return r.satellite;
        case Scope::TerrestrialA:
            return !r.satellite && a;
        case Scope::TerrestrialB:
            return !r.satellite && b;
        case Scope::TerrestrialOther:
            return !r.satellite && !a && !b;
    }
    return false;
}

struct Mapping {
    Scope scope;
    uint8_t from;
    uint8_t to;
};
constexpr Mapping kMappings[] = {
    {Scope::Satellite, 15, 0},   {Scope::TerrestrialA, 6, 3},  {Scope::TerrestrialA, 7, 2},
    {Scope::TerrestrialA, 8, 2}, {Scope::TerrestrialA, 11, 0}, {Scope::TerrestrialB, 7, 8},
    {Scope::TerrestrialB, 9, 8}, {Scope::TerrestrialB, 15, 0}, {Scope::TerrestrialOther, 15, 0},
};

// The first rule of a class that applies gives the label.
struct LabelRule {
    uint8_t genre;
    Scope scope;
    const char* label;
};
constexpr LabelRule kLabels[] = {
    {1, Scope::Any, "Movie"},
    {2, Scope::TerrestrialA, "News and Factual"},
    {2, Scope::Any, "News"},
    {3, Scope::Any, "Entertainment"},
    {4, Scope::Any, "Sport"},
    {5, Scope::Any, "Children's"},
    {6, Scope::TerrestrialA, "Entertainment"},
    {6, Scope::Any, "Music"},
    {7, Scope::TerrestrialA, "News and Factual"},
    {7, Scope::TerrestrialB, "Factual"},
    {7, Scope::Any, "Arts"},
    {8, Scope::TerrestrialA, "News and Factual"},
    {8, Scope::Any, "Factual"},
    {9, Scope::TerrestrialB, "Factual"},
    {9, Scope::Any, "Education"},
    {10, Scope::Any, "Lifestyle"},
    {11, Scope::TerrestrialA, ""},
    {11, Scope::Any, "Special"},
    {15, Scope::TerrestrialA, "Drama"},
};

}  // namespace

uint8_t Normalise(uint8_t genre, Reception r) {
    for (const Mapping& m : kMappings) {
        if (m.from == genre && Applies(m.scope, r)) {
            return m.to;
        }
    }
    return genre;
}

const char* Label(uint8_t genre, Reception r) {
    for (const LabelRule& rule : kLabels) {
        if (rule.genre == genre && Applies(rule.scope, r)) {
            return rule.label;
        }
    }
    return "";
}

}  // namespace GenreTables

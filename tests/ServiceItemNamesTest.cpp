// The service item table against every name in tests/data, and the editor's stepping
// rules and binary text.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

// The library keeps its pure logic private; tests reach it by path.
#include "../factorymanager/src/ServiceItemNames.h"
#include "../factorymanager/src/ServiceModeRules.h"

namespace {

// Every name a line of the data file stands for: its first {a,b} or {1..9} group
// varies slowest.
std::vector<std::string> Expand(const std::string& line) {
    const size_t open = line.find('{');
    if (open == std::string::npos) {
        return {line};
    }
    const size_t close = line.find('}', open);
    const std::string group = line.substr(open + 1, close - open - 1);
    std::vector<std::string> choices;
    const size_t dots = group.find("..");
    if (dots != std::string::npos) {
        for (int n = std::stoi(group.substr(0, dots)); n <= std::stoi(group.substr(dots + 2));
             ++n) {
            choices.push_back(std::to_string(n));
        }
    } else {
        for (size_t from = 0, comma;; from = comma + 1) {
            comma = group.find(',', from);
            choices.push_back(group.substr(from, comma - from));
            if (comma == std::string::npos) {
                break;
            }
        }
    }
    std::vector<std::string> out;
    for (const std::string& choice : choices) {
        for (const std::string& rest : Expand(line.substr(close + 1))) {
            out.push_back(line.substr(0, open) + choice + rest);
        }
    }
    return out;
}

std::vector<std::string> ExpectedNames() {
    std::ifstream file(VQ27_TEST_DATA "/service-item-names.txt");
    std::vector<std::string> names;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::vector<std::string> more =
            line[0] == '~' ? std::vector<std::string>(std::stoul(line.substr(1))) : Expand(line);
        names.insert(names.end(), more.begin(), more.end());
    }
    return names;
}

TEST(ServiceItemNamesTest, EverySlotHasTheSetsName) {
    const std::vector<std::string> expected = ExpectedNames();
    ASSERT_EQ(expected.size(), ServiceItems::kCount);
    for (unsigned index = 0; index < ServiceItems::kCount; ++index) {
        EXPECT_EQ(ServiceItems::Name(index), expected[index]) << "index " << index;
    }
    EXPECT_STREQ(ServiceItems::Name(ServiceItems::kCount), "");
    EXPECT_STREQ(ServiceItems::Name(0xFFFFFFFFu), "");
}

TEST(ServiceItemNamesTest, AddressesBelowTheTableShowItemZero) {
    EXPECT_EQ(ServiceItems::IndexOf(0x000), 0u);
    EXPECT_EQ(ServiceItems::IndexOf(0x7FF), 0u);
    EXPECT_EQ(ServiceItems::IndexOf(0x800), 0u);
    EXPECT_EQ(ServiceItems::IndexOf(0x801), 1u);
    EXPECT_EQ(ServiceItems::IndexOf(0xD83), 1411u);
}

// ---- Stepping rules ----------------------------------------------------------------

struct StepCase {
    int value, min, max, command;
    bool up;
    int expected;
};

class ServiceStepValueTest : public ::testing::TestWithParam<StepCase> {};

TEST_P(ServiceStepValueTest, StepsInsideTheRange) {
    const StepCase& c = GetParam();
    EXPECT_EQ(ServiceMode::StepValue(c.value, c.min, c.max, c.command, c.up), c.expected);
}

// The editor's service-command table covers the steps themselves; here the corners
// it cannot reach through the set.
INSTANTIATE_TEST_SUITE_P(Steps, ServiceStepValueTest,
                         ::testing::Values(
                             // outside the range, on either side: left as it is
                             StepCase{1, 5, 10, 28, true, 1}, StepCase{1, 5, 10, 29, false, 1},
                             StepCase{20, 0, 10, 29, false, 20},
                             // a command of the other direction, or none: nothing changes
                             StepCase{5, 0, 10, 0, false, 5}, StepCase{5, 0, 10, 28, false, 5},
                             StepCase{5, 0, 10, 29, true, 5},
                             // four steps near the ends of the byte do not wrap around
                             StepCase{253, 0, 255, 30, true, 253},
                             StepCase{2, 0, 255, 31, false, 2}));

TEST(ServiceRulesTest, BitsToggleWhateverTheRange) {
    EXPECT_EQ(ServiceMode::ToggleBit(0x80, 7), 0x00);
    EXPECT_EQ(ServiceMode::ToggleBit(0x00, 7), 0x80);
    EXPECT_EQ(ServiceMode::ToggleBit(0x05, 0), 0x04);
    EXPECT_EQ(ServiceMode::ToggleBit(0x05, 1), 0x07);
    // A bit beyond the byte leaves it as it is.
    EXPECT_EQ(ServiceMode::ToggleBit(0x05, 8), 0x05);
    EXPECT_EQ(ServiceMode::ToggleBit(0x05, 40), 0x05);
}

TEST(ServiceRulesTest, BinaryTextIsMostSignificantFirstAndPadded) {
    char text[12];
    ServiceMode::BinaryText(5, text, 8);
    EXPECT_STREQ(text, "00000101");
    ServiceMode::BinaryText(0, text, 8);
    EXPECT_STREQ(text, "00000000");
    ServiceMode::BinaryText(0xFF, text, 8);
    EXPECT_STREQ(text, "11111111");
    ServiceMode::BinaryText(5, text, 3);
    EXPECT_STREQ(text, "101");
    // Bits beyond len are dropped rather than written before the buffer.
    ServiceMode::BinaryText(0x1FF, text, 4);
    EXPECT_STREQ(text, "1111");
    unsigned short wide[9];
    ServiceMode::BinaryText(0x7F, wide, 8);
    EXPECT_EQ(std::u16string(wide, wide + 8), u"01111111");
    EXPECT_EQ(wide[8], 0);
}

}  // namespace

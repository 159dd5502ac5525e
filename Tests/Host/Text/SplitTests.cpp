#include "Host/Text/Split.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

TEST(Split, KeepsEmptyParts) {
    struct Row {
        const char* text;
        std::vector<std::string_view> parts;
    };
    const Row rows[] = {{"a,bc,d", {"a", "bc", "d"}},
                        {"a", {"a"}},
                        {"", {""}},
                        {",a,", {"", "a", ""}},
                        {",,", {"", "", ""}}};
    for (const Row& row : rows) {
        EXPECT_EQ(Split(row.text, ','), row.parts) << row.text;
    }
}

} // namespace
} // namespace Kerovane::Host

#include "Host/Text/NearestNames.h"

#include <gtest/gtest.h>

#include <vector>

namespace Kerovane::Host {
namespace {

TEST(Suggestion, NamesTheNearestNames) {
    const std::vector<std::string> names{"size",
                                         "size-level",
                                         "size-random",
                                         "dissolve",
                                         "transition-progress",
                                         "transition-type",
                                         "direction",
                                         "ratio"};
    struct Row {
        const char* word;
        const char* suggestion;
    };
    constexpr Row kRows[] = {
        {"siez", "; did you mean size?"},
        {"size-levle", "; did you mean size-level?"},
        {"disolv", "; did you mean dissolve?"},
        {"transition", "; did you mean transition-type or transition-progress?"},
        {"size-", "; did you mean size, size-level or size-random?"},
        {"frobnicate", ""},
        {"zz", ""},
        {"", ""},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(Suggestion(row.word, names), row.suggestion) << row.word;
    }
}

} // namespace
} // namespace Kerovane::Host

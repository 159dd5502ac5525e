#pragma once

#include <cstddef>

/// Asserts that `member` is the `number`th pointer of `Table`, counted from 1.
#define TESSELUNE_ASSERT_SLOT(Table, number, member)                                               \
    static_assert(offsetof(Table, member) == ((number)-1) * sizeof(void*))

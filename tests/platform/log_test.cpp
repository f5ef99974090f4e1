// The handle's log and journal.
#include "qbdb.h"

#include <gtest/gtest.h>

TEST(Log, PlaceHolder) { EXPECT_EQ(qbdb_dow_to_i("Sun"), 1); }

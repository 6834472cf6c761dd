#include <morvane.h>

#include <gtest/gtest.h>

TEST(Smoke, Builds)
{
    Morvane::Coordinate c;
    EXPECT_EQ(0.0, c.GetLongitude());
}

#include "base/random.h"

#include <cstdint>
#include <ctime>
#include <gtest/gtest.h>

namespace tarn {
namespace {

TEST(Random, GivesTheKnownFirstValuesOfSeedOne) {
  Random random(1);
  for (const int32_t expected :
       {41, 18467, 6334, 26500, 19169, 15724, 11478, 29358, 26962, 24464}) {
    EXPECT_EQ(random.Next(), expected);
  }
}

TEST(Random, FollowsItsFormulaForEverySeed) {
  for (const uint64_t seed : {0ULL, 1ULL, 2ULL, 12345ULL, 0x7FFFFFFFULL, 0xFFFFFFFFULL}) {
    Random random(static_cast<uint32_t>(seed));
    uint64_t state = seed;
    for (int i = 0; i < 1000; ++i) {
      state = (state * 214013 + 2531011) % (uint64_t{1} << 32);
      const uint64_t value = state / 65536 % 32768;
      ASSERT_EQ(random.Next(), static_cast<int32_t>(value)) << seed << ", draw " << i;
    }
  }
}

TEST(Random, ReachesBothEndsOfItsRange) {
  Random random(7);
  int32_t least = Random::kLargest, most = 0;
  for (int i = 0; i < 1000000; ++i) {
    const int32_t value = random.Next();
    least = value < least ? value : least;
    most = value > most ? value : most;
  }
  EXPECT_EQ(least, 0);
  EXPECT_EQ(most, Random::kLargest);
}

TEST(Random, RepeatsItselfForTheSameSeed) {
  Random first(99), second(99), other(100);
  bool differs = false;
  for (int i = 0; i < 100; ++i) {
    const int32_t value = first.Next();
    EXPECT_EQ(second.Next(), value);
    differs = differs || other.Next() != value;
  }
  EXPECT_TRUE(differs);
}

TEST(SeedSource, GivesTheFixedSeedEveryTime) {
  const SeedSource seeds(4294967295U);
  EXPECT_EQ(seeds.Next(), 4294967295U);
  EXPECT_EQ(seeds.Next(), 4294967295U);
  EXPECT_EQ(SeedSource(0U).Next(), 0U);
}

TEST(SeedSource, GivesTheTimeInSecondsWithoutAFixedSeed) {
  const auto before = static_cast<uint32_t>(std::time(nullptr));
  const uint32_t seed = SeedSource().Next();
  const auto after = static_cast<uint32_t>(std::time(nullptr));
  EXPECT_GE(seed, before);
  EXPECT_LE(seed, after);
}

}  // namespace
}  // namespace tarn

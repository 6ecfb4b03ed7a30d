#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <thread>
#include <vector>

#include "reference/exponential.h"

// Every float there is, through each of the four functions: error against long double, the
// float result against the exact one, saturation, and one hash of all float results.

namespace tarn::reference {
namespace {

constexpr uint32_t kChunkBits = 20;
constexpr uint32_t kChunks = 1U << (32 - kChunkBits);
constexpr uint32_t kNanHash = 0x7FC00000U;  // of every NaN: sign and payload are the machine's
constexpr uint64_t kHashStart = 0xCBF29CE484222325U;
constexpr uint64_t kHashFactor = 0x100000001B3U;

using Function = double (*)(double);
using Reference = long double (*)(long double);

// One function under test.
struct Subject {
  Function function;
  Reference exact;        // from kSeriesBelow to `saturated_from` in magnitude
  Reference small;        // below, where a short series is exact to a long double and faster
  double saturated_from;  // beyond, the double result is one and the same for each sign
  // f(-x) = mirror f(x); 0: no such rule. Negative arguments are then held against the positive
  // ones, for half of the slow references.
  double mirror;
};

struct Result {
  double largest_error = 0;    // in units in the last place of the double
  uint64_t float_differs = 0;  // from the float of the exact value
  uint64_t not_mirrored = 0;
  uint64_t not_saturated = 0;
  uint64_t turned = 0;  // steps against the direction
  uint64_t nan_lost = 0;
  uint64_t hash = kHashStart;
};

constexpr double kSeriesBelow = 0x1p-10;

long double ExpSeries(long double x) {
  return 1 + (x + x * x / 2 + x * x * x / 6 + x * x * x * x / 24 + x * x * x * x * x / 120);
}
long double SinhSeries(long double x) {
  const long double y = x * x;
  return x + x * (y / 6 + y * y / 120);
}
long double CoshSeries(long double x) {
  const long double y = x * x;
  return 1 + (y / 2 + y * y / 24);
}
long double TanhSeries(long double x) {
  const long double y = x * x;
  return x + x * (-y / 3 + y * y * (2.0L / 15) - y * y * y * (17.0L / 315));
}

double UnitInLastPlace(double value) {
  const uint64_t bits = std::bit_cast<uint64_t>(std::fabs(value));
  return std::bit_cast<double>(bits + 1) - std::bit_cast<double>(bits);
}

void Compare(double got, long double exact, Result& result) {
  const double nearest = static_cast<double>(exact);
  if (std::isinf(nearest) || std::isinf(got)) {
    if (got != nearest) result.largest_error = std::numeric_limits<double>::infinity();
  } else {
    const long double off = std::fabs(static_cast<long double>(got) - exact);
    const double units = static_cast<double>(off / UnitInLastPlace(nearest));
    result.largest_error = std::max(result.largest_error, units);
  }
  if (static_cast<float>(got) != static_cast<float>(exact)) ++result.float_differs;
}

bool SameBits(double a, double b) {
  return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}

float FloatOf(const Subject& subject, uint32_t argument_bits) {
  return static_cast<float>(subject.function(std::bit_cast<float>(argument_bits)));
}

// The floats whose upper bits are `chunk`: one sign, ascending magnitude. On one side of zero
// each function goes one way only.
Result RunChunk(const Subject& subject, uint32_t chunk) {
  const uint32_t start = chunk << kChunkBits;
  const bool negative = chunk >= kChunks / 2;
  const double sign = negative ? -1.0 : 1.0;
  const double limit = subject.function(sign * std::numeric_limits<double>::infinity());
  const bool falls = subject.function(sign) < subject.function(0.0);
  const bool at_zero = chunk % (kChunks / 2) == 0;

  Result result;
  float last = FloatOf(subject, at_zero ? start : start - 1);
  for (uint32_t bits = start; bits - start < (1U << kChunkBits); ++bits) {
    const double x = std::bit_cast<float>(bits);
    const double got = subject.function(x);
    const float value = static_cast<float>(got);
    const uint32_t hashed = std::isnan(value) ? kNanHash : std::bit_cast<uint32_t>(value);
    result.hash = (result.hash ^ hashed) * kHashFactor;
    if (std::isnan(x)) {
      if (!std::isnan(value)) ++result.nan_lost;
      continue;
    }
    if (!(falls ? value <= last : value >= last)) ++result.turned;
    last = value;
    const double magnitude = std::fabs(x);
    if (magnitude >= subject.saturated_from) {
      if (!SameBits(got, limit)) ++result.not_saturated;
    } else if (negative && subject.mirror != 0) {
      if (!SameBits(got, subject.mirror * subject.function(magnitude))) ++result.not_mirrored;
    } else {
      Compare(got, magnitude < kSeriesBelow ? subject.small(x) : subject.exact(x), result);
    }
  }
  return result;
}

Result RunAll(const Subject& subject) {
  std::vector<Result> chunks(kChunks);
  std::atomic<uint32_t> next = 0;
  const auto work = [&] {
    for (uint32_t chunk = next++; chunk < kChunks; chunk = next++) {
      chunks[chunk] = RunChunk(subject, chunk);
    }
  };
  std::thread other(work);
  work();
  other.join();

  // The hash joins the chunks by their order, whichever thread made them.
  Result all;
  for (const Result& chunk : chunks) {
    all.largest_error = std::max(all.largest_error, chunk.largest_error);
    all.float_differs += chunk.float_differs;
    all.not_mirrored += chunk.not_mirrored;
    all.not_saturated += chunk.not_saturated;
    all.turned += chunk.turned;
    all.nan_lost += chunk.nan_lost;
    all.hash = (all.hash ^ chunk.hash) * kHashFactor;
  }
  return all;
}

long double ExactExp(long double x) {
  return std::exp(x);
}
long double ExactSinh(long double x) {
  return std::sinh(x);
}
long double ExactCosh(long double x) {
  return std::cosh(x);
}
long double ExactTanh(long double x) {
  return std::tanh(x);
}

struct Expected {
  double largest_error;
  uint64_t float_differs;
  uint64_t hash;
};

void ExpectAll(const Subject& subject, const Expected& expected) {
  const Result result = RunAll(subject);
  testing::Test::RecordProperty("largest_error", testing::PrintToString(result.largest_error));
  EXPECT_LE(result.largest_error, expected.largest_error);
  EXPECT_EQ(result.float_differs, expected.float_differs);
  EXPECT_EQ(result.not_mirrored, 0U);
  EXPECT_EQ(result.not_saturated, 0U);
  EXPECT_EQ(result.turned, 0U);
  EXPECT_EQ(result.nan_lost, 0U);
  EXPECT_EQ(result.hash, expected.hash);
}

// A double result is off by a unit or so, so its float can only differ from that of the exact
// value where that lies as near to the middle between two floats, which are 2^29 units apart:
// for the few hundred million arguments that are not trivial that is about one case a function.
// It is one for the hyperbolic sine (and the same argument negated), none for the others.

TEST(EveryFloat, ThroughTheExponential) {
  ExpectAll({Exp, ExactExp, ExpSeries, 746.0, 0.0}, {0.93, 0, 12893940817107729740U});
}

TEST(EveryFloat, ThroughTheHyperbolicSine) {
  ExpectAll({Sinh, ExactSinh, SinhSeries, 711.0, -1.0}, {1.62, 1, 3411834875259797645U});
}

TEST(EveryFloat, ThroughTheHyperbolicCosine) {
  ExpectAll({Cosh, ExactCosh, CoshSeries, 711.0, 1.0}, {1.35, 0, 4853099935729802653U});
}

TEST(EveryFloat, ThroughTheHyperbolicTangent) {
  ExpectAll({Tanh, ExactTanh, TanhSeries, 23.0, -1.0}, {1.44, 0, 6204502331484203381U});
}

}  // namespace
}  // namespace tarn::reference

// Tiles of vectors that stay in registers, and how a batch is cut into them. Included once for
// every target.

#if defined(TARN_ENGINE_KERNELS_TILES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef TARN_ENGINE_KERNELS_TILES_INL_H_
#undef TARN_ENGINE_KERNELS_TILES_INL_H_
#else
#define TARN_ENGINE_KERNELS_TILES_INL_H_
#endif

#include <cstddef>
#include <hwy/highway.h>
#include <type_traits>

#include "engine/kernels/network_panels.h"

// A tile is in registers only when the loops over it have gone.
#undef TARN_UNROLL
#if HWY_COMPILER_CLANG
#define TARN_UNROLL _Pragma("clang loop unroll(full)")
#else
#define TARN_UNROLL _Pragma("GCC unroll 16")
#endif

HWY_BEFORE_NAMESPACE();
namespace tarn::kernels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using FloatTag = hn::ScalableTag<float>;
using FloatVector = hn::Vec<FloatTag>;

// Targets with 32 registers take wider tiles than those with 16.
#if HWY_TARGET <= HWY_AVX3 || HWY_ARCH_ARM_A64
constexpr size_t kPanelVectors = 4;
constexpr size_t kTileVectors = 24;
#else
constexpr size_t kPanelVectors = 2;
constexpr size_t kTileVectors = 8;
#endif

HWY_INLINE PanelShape Shape() {
  const size_t lanes = hn::Lanes(FloatTag());
  return {lanes, kPanelVectors * lanes};
}

template <size_t kRows, size_t kVectors>
struct Tile {
  FloatVector at[kRows][kVectors];
};

template <size_t kValue>
using Count = std::integral_constant<size_t, kValue>;

// Rows of the largest tile of so many vectors: eight hide the latency of a sum.
template <size_t kVectors>
constexpr size_t kMostRows = kTileVectors / kVectors < 8 ? kTileVectors / kVectors : 8;

template <size_t kRows, size_t kVectors, typename Body>
HWY_INLINE size_t TilesOfRows(size_t row, size_t count, const Body& body) {
  for (; row + kRows <= count; row += kRows) body(Count<kRows>(), Count<kVectors>(), row);
  return row;
}

// Calls body(Count<rows>, Count<vectors>, first row) for tiles that cover `count` rows.
template <size_t kVectors, typename Body>
HWY_INLINE void TilesOfVectors(size_t count, const Body& body) {
  size_t row = TilesOfRows<kMostRows<kVectors>, kVectors>(0, count, body);
  if constexpr (kMostRows < kVectors >> 4) row = TilesOfRows<4, kVectors>(row, count, body);
  if constexpr (kMostRows < kVectors >> 2) row = TilesOfRows<2, kVectors>(row, count, body);
  TilesOfRows<1, kVectors>(row, count, body);
}

// The same for a number of vectors, at most kPanelVectors, that is known only now.
template <typename Body>
HWY_INLINE void ForTiles(size_t vectors, size_t count, const Body& body) {
  if (vectors == 1) return TilesOfVectors<1>(count, body);
  if constexpr (kPanelVectors == 2) {
    return TilesOfVectors<2>(count, body);
  } else {
    if (vectors == 2) return TilesOfVectors<2>(count, body);
    if (vectors == 3) return TilesOfVectors<3>(count, body);
    TilesOfVectors<4>(count, body);
  }
}

}  // namespace tarn::kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

#pragma once

#include <cstdint>
#include <span>

namespace tarn::reference {

// The transfer function of one layer, for all its nodes or any part of them. `negated_net`
// holds x = -net of each node; output y and, unless that span is empty, the derivative by the
// net input are stored for each:
//   code          y                      derivative
//   0 Sigmoid     1 / (e^x + 1)          (1 - y) y
//   1 Gaussian    e^-(x x)               x 2 y          (= -2 net y)
//   2 Tanh        (t + 1) 0.5            (1 - t t) 0.5,  t = tanh(net)
//   3 Sech        1 / c                  (-s y) y,       c = cosh(net), s = sinh(net)
// A code outside 0..3 leaves both as they are. The spans are of one length and do not overlap.
//
// The exponential and hyperbolic functions are double precision on the float argument (the
// Gaussian's x x rounded to float first), their result rounded to float; every sum, product
// and quotient behind them is single, in the order written. Every y lies in 0..1. Large
// arguments, infinite ones too, saturate: an overflowing e^x gives 0, and where a Gaussian's or
// Sech's y is 0 its derivative is 0. A NaN comes only of a NaN.
void ApplyTransfer(int32_t code, std::span<const float> negated_net, std::span<float> output,
                   std::span<float> derivative_or_empty);

}  // namespace tarn::reference

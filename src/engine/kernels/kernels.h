#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/kernels/network_panels.h"

// The hot loops of the engine in vectors, compiled for every instruction set of the machine's
// kind and chosen at run time. Every result is that of the plain loops bit for bit: products
// and sums are rounded one by one in single precision and each sum stays in the given order;
// only the payload and sign of a NaN are the machine's own.

namespace tarn::kernels {

// The instruction sets that the kernels are compiled for, as the bits that Highway gives them.
int64_t CompiledTargets();

// Of the instruction set in use. Panels made for one shape serve functions of that shape only.
PanelShape CurrentShape();

struct WeightStep {
  float alpha = 0;  // momentum
  float eta = 0;    // learn rate
};

// Where a batch stands in its weight-update group.
struct GroupStep {
  bool begins = false;  // sums start from 0
  bool ends = false;    // weights move
  WeightStep step;
};

// One of `count` equal shares of a work that is cut by the nodes of a layer.
struct Part {
  size_t index = 0;
  size_t count = 1;

  size_t Begin(size_t total) const { return total * index / count; }
  size_t End(size_t total) const { return total * (index + 1) / count; }
};

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
void Transfer(int32_t code, std::span<const float> negated_net, std::span<float> output,
              std::span<float> derivative);

// Forward pass of the patterns first..first+count-1 of the batch, with derivatives if wanted.
// `nets` is room as network.nets, of the calling thread's own.
void Forward(const NetworkPanels& network, size_t first, size_t count, bool derivatives,
             float* nets);

// Deltas and factors of these patterns, from their targets, outputs and derivatives:
//   top:    delta = (target - output) derivative
//   hidden: delta = (sum of delta w over the nodes above) derivative,
//           factor = FAST-Prop delta + output
void Deltas(const NetworkPanels& network, float fast_prop, size_t first, size_t count);

// Gradients of the patterns first..first+count-1 of the batch (none will do), added to the sums
// of the group:
//   gradient += factor delta, and for the bias: gradient += delta
// When the group ends the weights move, and the sums are not stored:
//   change = alpha change + eta gradient, weight += change mask
void Gradients(const NetworkPanels& network, size_t first, size_t count, const GroupStep& group,
               const Part& part);

// The pattern before the first one of a batch whose patterns are groups of their own.
struct PreviousPattern {
  const float* input = nullptr;  // its row of the input layer
  size_t place = 0;              // where its deltas and factors stand
};

// Training pattern by pattern, for the first `count` patterns of the batch: the update by the
// pattern before, then the forward pass with derivatives, then, for all but the last pattern,
// deltas and factors. Panels are visited upwards or downwards in turn: each time the other way
// finds some of them in the cache.
void UpdateAndForward(const NetworkPanels& network, size_t count, const PreviousPattern& previous,
                      const WeightStep& step, float fast_prop, bool descending);

// A layer's panels of weights or the like as a table by node, the bias last: nodes x stride.
void ToTable(const PanelShape& shape, const float* panels, size_t sources, size_t nodes,
             float* table, size_t stride);

}  // namespace tarn::kernels

#include "reference/plain_reference.h"

#include <cmath>

#include "reference/exponential.h"

namespace tarn::reference {
namespace {

Table Copy(const Matrix& matrix) {
  Table table;
  for (size_t r = 0; r < matrix.rows(); ++r) {
    table.emplace_back(matrix.Row(r).begin(), matrix.Row(r).end());
  }
  return table;
}

// Output and derivative of one node from its negated net input.
void Transfer(int32_t code, float x, float& y, float& derivative) {
  if (code == 0) {
    const float e = static_cast<float>(Exp(x));
    y = 1.0F / (e + 1.0F);
    derivative = (1.0F - y) * y;
  } else if (code == 1) {
    const float square = x * x;
    y = static_cast<float>(Exp(-square));
    derivative = y == 0.0F ? 0.0F : x * 2.0F * y;
  } else if (code == 2) {
    const float t = static_cast<float>(Tanh(-x));
    y = (t + 1.0F) * 0.5F;
    derivative = (1.0F - t * t) * 0.5F;
  } else if (code == 3) {
    const float c = static_cast<float>(Cosh(-x));
    const float s = static_cast<float>(Sinh(-x));
    y = 1.0F / c;
    derivative = y == 0.0F ? 0.0F : -s * y * y;
  }
}

float Correlation(double n, double output, double target, double product, double output_squares,
                  double target_squares) {
  const double a = n * output_squares - output * output;
  const double b = n * target_squares - target * target;
  if (a <= 0 || b <= 0) return 0.0F;
  return static_cast<float>((n * product - output * target) / (std::sqrt(b) * std::sqrt(a)));
}

float Factor(float improvement) {
  if (improvement < -0.0005) return 0.8F;
  if (improvement >= -0.0005 && improvement < 0.0) return 0.995F;
  if (improvement >= 0.0 && improvement < 0.00001) return 1.02F;
  if (improvement >= 0.00001 && improvement < 0.00002) return 1.008F;
  if (improvement >= 0.00002 && improvement < 0.00005) return 1.002F;
  if (improvement >= 0.00005 && improvement < 0.001) return 1.001F;
  if (improvement > 0.0022) return 0.98F;
  return 1.0F;
}

}  // namespace

PlainTrainer::PlainTrainer(const Network& network)
    : m_targets(Copy(network.targets)),
      m_train_list(network.train_list.begin(), network.train_list.end()),
      m_test_list(network.test_list.begin(), network.test_list.end()),
      m_eta(network.Eta),
      m_eta_min(network.EtaMin),
      m_eta_max(network.EtaMax),
      m_alpha(network.Alpha),
      m_fast_prop(network.FastProp),
      m_tolerance(network.Tolerance),
      m_fully_connected(network.fully_connected),
      m_control_from(network.LRC),
      m_iteration(network.iteration) {
  m_group = m_train_list.size();
  if (network.WeightRate > 0 && network.WeightRate < network.nTrain) {
    m_group = static_cast<size_t>(network.WeightRate);
  }
  if (m_tolerance > 0 && network.targ_norm != 0) {
    const float range = network.target_limits.upper[0] - network.target_limits.lower[0];
    m_tolerance = 0.7F / range * m_tolerance;
  }
  for (size_t l = 0; l < static_cast<size_t>(network.nLayers); ++l) {
    const Layer& layer = network.layers[l];
    const size_t nodes = static_cast<size_t>(layer.nUnits);
    m_layers.push_back({layer.TransFunc, Copy(layer.weights), Copy(layer.weight_changes),
                        Copy(layer.masks), Copy(layer.weights), Copy(layer.activations),
                        Row(nodes, 0.0F), Row(nodes, 0.0F)});
  }
}

void PlainTrainer::RunIteration() {
  while (!RunGroup()) {
  }
  ++m_iteration;
  ControlLearnRate();
}

// Whether the group has completed a pass over the training list.
bool PlainTrainer::RunGroup() {
  bool complete = false;
  for (PlainLayer& layer : m_layers) {
    for (Row& row : layer.gradients) {
      for (float& gradient : row) gradient = 0.0F;
    }
  }
  for (size_t k = 0; k < m_group; ++k) {
    if (m_cursor == m_train_list.size()) m_cursor = 0;
    const size_t pattern = m_train_list[m_cursor];
    Forward(pattern);
    Deltas(pattern);
    Gradients(pattern);
    Monitor(pattern);
    if (m_cursor == m_train_list.size() - 1) {
      KeepFigures();
      complete = true;
    }
    ++m_cursor;
  }
  Update();
  return complete;
}

void PlainTrainer::Forward(size_t pattern) {
  for (size_t l = 1; l < m_layers.size(); ++l) {
    const Row& inputs = m_layers[l - 1].activations[pattern];
    for (size_t j = 0; j < m_layers[l].weights.size(); ++j) {
      const Row& weights = m_layers[l].weights[j];
      float x = -weights[inputs.size()];
      for (size_t i = 0; i < inputs.size(); ++i) {
        const float product = weights[i] * inputs[i];
        x = x - product;
      }
      Transfer(m_layers[l].code, x, m_layers[l].activations[pattern][j],
               m_layers[l].derivatives[j]);
    }
  }
}

void PlainTrainer::Deltas(size_t pattern) {
  const size_t last = m_layers.size() - 1;
  for (size_t j = 0; j < m_layers[last].deltas.size(); ++j) {
    const float error = m_targets[pattern][j] - m_layers[last].activations[pattern][j];
    m_layers[last].deltas[j] = error * m_layers[last].derivatives[j];
  }
  for (size_t l = last - 1; l >= 1; --l) {
    for (size_t i = 0; i < m_layers[l].deltas.size(); ++i) {
      float sum = 0.0F;
      for (size_t j = 0; j < m_layers[l + 1].deltas.size(); ++j) {
        const float product = m_layers[l + 1].deltas[j] * m_layers[l + 1].weights[j][i];
        sum = sum + product;
      }
      m_layers[l].deltas[i] = sum * m_layers[l].derivatives[i];
    }
  }
}

void PlainTrainer::Gradients(size_t pattern) {
  for (size_t l = 1; l < m_layers.size(); ++l) {
    const Row& inputs = m_layers[l - 1].activations[pattern];
    for (size_t j = 0; j < m_layers[l].deltas.size(); ++j) {
      const float delta = m_layers[l].deltas[j];
      Row& gradients = m_layers[l].gradients[j];
      for (size_t i = 0; i < inputs.size(); ++i) {
        const float own = m_fast_prop * m_layers[l - 1].deltas[i];
        const float source = own + inputs[i];
        const float product = source * delta;
        gradients[i] = gradients[i] + product;
      }
      gradients[inputs.size()] = gradients[inputs.size()] + delta;
    }
  }
}

void PlainTrainer::Update() {
  for (size_t l = 1; l < m_layers.size(); ++l) {
    PlainLayer& layer = m_layers[l];
    for (size_t j = 0; j < layer.weights.size(); ++j) {
      const size_t bias = layer.weights[j].size() - 1;
      for (size_t i = 0; i <= bias; ++i) {
        const float momentum = m_alpha * layer.changes[j][i];
        const float step = m_eta * layer.gradients[j][i];
        const float change = momentum + step;
        const bool masked = i < bias && !m_fully_connected;
        const float move = masked ? change * layer.masks[j][i] : change;
        layer.changes[j][i] = change;
        layer.weights[j][i] = layer.weights[j][i] + move;
      }
    }
  }
}

void PlainTrainer::Monitor(size_t pattern) {
  const Row& outputs = m_layers.back().activations[pattern];
  for (size_t j = 0; j < outputs.size(); ++j) {
    const float error = m_targets[pattern][j] - outputs[j];
    if (m_tolerance > 0 && std::fabs(error) < m_tolerance) ++m_hits;
    const float square = error * error;
    m_squared_error = m_squared_error + square;
    const double output = outputs[j];
    const double target = m_targets[pattern][j];
    m_sum_product += output * target;
    m_sum_target += target;
    m_sum_output += output;
    m_sum_output_squares += output * output;
    m_sum_target_squares += target * target;
  }
}

void PlainTrainer::KeepFigures() {
  const double n =
      static_cast<double>(m_train_list.size()) * static_cast<double>(m_layers.back().deltas.size());
  m_train.mean_squared_error = m_squared_error / static_cast<float>(n);
  m_train.rms = std::sqrt(m_train.mean_squared_error);
  m_train.correlation = Correlation(n, m_sum_output, m_sum_target, m_sum_product,
                                    m_sum_output_squares, m_sum_target_squares);
  m_train.within = static_cast<float>(static_cast<double>(m_hits) / n * 100.0);
  m_squared_error = 0;
  m_sum_product = m_sum_target = m_sum_output = 0;
  m_sum_output_squares = m_sum_target_squares = 0;
  m_hits = 0;
}

void PlainTrainer::ControlLearnRate() {
  const float previous = m_current_error;
  m_current_error = m_train.mean_squared_error;
  if (m_iteration < m_control_from || !(m_current_error > 0)) return;
  const float difference = previous - m_current_error;
  m_eta = m_eta * Factor(difference / m_current_error);
  if (m_eta > m_eta_max) m_eta = m_eta_max;
  if (m_eta < m_eta_min) m_eta = m_eta_min;
}

Figures PlainTrainer::TestFigures() {
  if (m_test_list.empty()) return {};
  float squared_error = 0, output_sum = 0, target_sum = 0, product_sum = 0;
  float output_squares = 0, target_squares = 0;
  int64_t hits = 0;
  for (size_t pattern : m_test_list) {
    Forward(pattern);
    const Row& outputs = m_layers.back().activations[pattern];
    for (size_t j = 0; j < outputs.size(); ++j) {
      const float output = outputs[j];
      const float target = m_targets[pattern][j];
      const float error = target - output;
      if (m_tolerance > 0 && std::fabs(error) < m_tolerance) ++hits;
      squared_error = squared_error + error * error;
      product_sum = product_sum + output * target;
      target_sum = target_sum + target;
      output_sum = output_sum + output;
      output_squares = output_squares + output * output;
      target_squares = target_squares + target * target;
    }
  }
  const double n =
      static_cast<double>(m_test_list.size()) * static_cast<double>(m_layers.back().deltas.size());
  Figures figures;
  figures.mean_squared_error = squared_error / static_cast<float>(n);
  figures.rms = std::sqrt(figures.mean_squared_error);
  figures.correlation =
      Correlation(n, output_sum, target_sum, product_sum, output_squares, target_squares);
  figures.within = static_cast<float>(static_cast<double>(hits) / n * 100.0);
  return figures;
}

}  // namespace tarn::reference

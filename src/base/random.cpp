#include "base/random.h"

#include <ctime>

namespace tarn {

uint32_t SeedSource::Next() const {
  return m_fixed ? *m_fixed : static_cast<uint32_t>(std::time(nullptr));
}

}  // namespace tarn

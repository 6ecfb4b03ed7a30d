#include "base/file_layer.h"

namespace tarn {
namespace {

FileLayer*& Current() {
  static FileLayer* current = &SystemFiles();
  return current;
}

}  // namespace

FileLayer& Files() {
  return *Current();
}

ScopedFileLayer::ScopedFileLayer(FileLayer& layer) : m_previous(Current()) {
  Current() = &layer;
}

ScopedFileLayer::~ScopedFileLayer() {
  Current() = m_previous;
}

}  // namespace tarn

#include "app/application_paths.h"

#include "base/file_layer.h"
#include "base/paths.h"

namespace tarn {

ApplicationPaths FormApplicationPaths() {
  return {FullPath("TARN.HLP"), FullPath("TABULO.EXE"), FullPath("TABULO.TBI"),
          Files().CurrentDirectory()};
}

}  // namespace tarn

#include "netfile/configuration_file.h"

#include "base/file_layer.h"
#include "base/output_file.h"

namespace tarn {

void WriteConfigurationFile() {
  constexpr size_t kLongest = 255;
  OutputFile file;
  if (!file.OpenReplacing("tarn.cfg", OutputFile::Content::kText, OutputFile::Links::kReplaced)) {
    return;
  }
  file.Printf("%s\n", Files().CurrentDirectory().substr(0, kLongest));
  (void)file.Commit();
}

}  // namespace tarn

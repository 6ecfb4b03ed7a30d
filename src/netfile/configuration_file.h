#pragma once

namespace tarn {

// Written when the program ends: "tarn.cfg" in the current directory, holding that directory
// (at most 255 characters of it) as its one line. A link of that name is replaced: the folder may
// be one that others have filled. A failure is not reported; nothing reads the file.
void WriteConfigurationFile();

}  // namespace tarn

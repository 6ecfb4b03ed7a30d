#pragma once

#include <cstdint>
#include <fmt/printf.h>
#include <string>
#include <string_view>

#include "base/file_layer.h"

namespace tarn {

// A file being written, of which nobody ever finds half: the old content stays until Commit
// has brought the new one to the disk, and comes back when anything fails or Commit is never
// called. In texts, which hold no "\r", every "\n" is stored as the line end of the file layer;
// bytes stay as they are.
class OutputFile {
 public:
  enum class Content { kText, kBytes };
  // What becomes of a symbolic link that has the name of the file: a link that the user names is
  // followed and stays a link, one that happens to be there is replaced.
  enum class Links { kFollowed, kReplaced };

  OutputFile() = default;
  ~OutputFile() { Discard(); }
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Replaces the file `path`: writes a temporary in its folder that Commit renames over it. The
  // old file's access rights are kept. A device or a pipe is written as it stands, unless links
  // are replaced: then it is, too. False when the file may not be written or the folder takes no
  // new file.
  bool OpenReplacing(const std::string& path, Content content = Content::kText,
                     Links links = Links::kFollowed);
  // Creates the file `path`; one that exists already is never touched.
  bool OpenNew(const std::string& path);
  // The same for the user alone, where files have modes.
  bool OpenPrivate(const std::string& path);
  // Appends to the file `path`, creating it when missing; Discard cuts it back to its old
  // length, or removes it when it is new.
  bool OpenAppending(const std::string& path);

  // Everything after a failed write fails as well.
  bool Write(std::string_view text);
  template <typename... Args>
  bool Printf(const char* format, const Args&... args) {
    return Write(fmt::sprintf(format, args...));
  }

  // Ends the writing; true when all of it is in the file under its name. After a failure the
  // file is as it was.
  bool Commit();
  // Gives up: the file stays as it was.
  void Discard();

 private:
  enum class Way { kReplace, kNew, kAppend, kDirect };

  bool Start(Way way, const std::string& path, FileLayer::Mode mode);
  void AppendText(std::string_view text);
  bool Flush();
  bool Close();
  bool Replace();

  FileLayer::Handle m_file = FileLayer::kNoFile;
  Way m_way = Way::kDirect;
  std::string m_path;      // the file as the user names it, links resolved
  std::string m_written;   // the file that is open: the temporary when replacing
  int64_t m_old_size = 0;  // when appending
  bool m_created = false;  // not there before, and not written beside another
  std::string_view m_line_end = "\n";
  std::string m_pending;  // written but not yet handed to the file layer
  bool m_failed = false;
};

}  // namespace tarn

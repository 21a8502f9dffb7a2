#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "browser/worker/ExportFile.h"

namespace browser {

// A file that is written while its session goes on. A process of its own writes it, split off from the
// session's: all that there was stands still for it, whatever the session does afterwards with reports, rows
// and views. It shares nothing but the file and a pipe, on which it tells how far it is, and it ends with
// this object, and with the session's process however that ends.
class ExportJob {
 public:
  // True when the file is whole, false when `progress` stopped it; raises when it cannot be written.
  using Write = std::function<bool(ExportFile& file, const exports::Progress& progress)>;
  enum class State { kWriting, kWritten, kFailed };
  struct Progress {
    std::size_t done = 0;
    std::size_t all = 0;
  };

  // Begins. `foreign` is a descriptor that is the session's alone. Raises platform::Error when no process can
  // be made. To be called while the process has one thread.
  ExportJob(ExportFile file, const Write& write, int foreign);
  ExportJob(const ExportJob&) = delete;
  ExportJob& operator=(const ExportJob&) = delete;
  ExportJob(ExportJob&&) = delete;
  ExportJob& operator=(ExportJob&&) = delete;
  ~ExportJob();

  // Can be read from as soon as there is something to Follow.
  int Descriptor() const { return news_; }
  // Takes in what was told since, without waiting. Afterwards LastProgress is the latest of it.
  State Follow();
  const std::optional<Progress>& LastProgress() const { return progress_; }
  // Of a job that is kWritten.
  ExportFile TakeFile();

 private:
  [[noreturn]] void RunWriter(const Write& write, int news, int foreign, int session);

  ExportFile file_;
  int writer_ = -1;  // the process, until it was waited for
  int news_ = -1;
  State state_ = State::kWriting;
  std::optional<Progress> progress_;
};

}  // namespace browser

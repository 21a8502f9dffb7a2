#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace browser {

// A worker as its parent sees it: a process and this end of the socket pair. The process is ended, at the
// latest, with this object.
class WorkerProcess {
 public:
  // Starts `executable` with the arguments; "{}" among them stands for the number of the worker's end.
  // Raises platform::Error when that fails.
  WorkerProcess(const std::string& executable, const std::vector<std::string>& arguments);
  WorkerProcess(const WorkerProcess&) = delete;
  WorkerProcess& operator=(const WorkerProcess&) = delete;
  WorkerProcess(WorkerProcess&&) = delete;
  WorkerProcess& operator=(WorkerProcess&&) = delete;
  ~WorkerProcess();

  pid_t Id() const { return id_; }
  // Hands this end to the caller, who closes it.
  int TakeDescriptor();

 private:
  pid_t id_ = -1;
  int descriptor_ = -1;
};

}  // namespace browser

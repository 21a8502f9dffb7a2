#include "player/Transcript.h"

namespace player {

void Transcript::Write(const Json& line) {
  if (ended_) return;
  waiting_.push_back(ToLine(line));
  Flush();
}

std::size_t Transcript::KeepPlace() {
  ++open_;
  waiting_.emplace_back();
  return waiting_.size() - 1;
}

void Transcript::Fill(std::size_t place, const Json& line) {
  waiting_[place] = ToLine(line);
  --open_;
  Flush();
}

// Places are positions in what waits, so nothing leaves while one is open.
void Transcript::Flush() {
  if (open_ != 0) return;
  for (const std::string& line : waiting_) out_ << line << '\n';
  waiting_.clear();
}

}  // namespace player

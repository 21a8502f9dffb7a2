#pragma once

namespace component {

// While it lives, the flag is set: fields change by themselves, and no rule tells the user anything.
class Quiet {
 public:
  explicit Quiet(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;
  Quiet(Quiet&&) = delete;
  Quiet& operator=(Quiet&&) = delete;
  ~Quiet() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

}  // namespace component

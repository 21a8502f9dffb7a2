#pragma once

#include <string>

#include "component/frame/clsPass.h"
#include "platform/form/Form.h"

namespace component {

// The progress box: a message and a bar. Showing it is what starts the work, since activation goes back
// through clsPass to the report, which fetches inside that event and unloads the box at the end. It offers no
// button, as clicks reach it while the work goes on.
class frmProgBar final : public platform::Form {
 public:
  explicit frmProgBar(const platform::Ref<clsPass>& pass);
  frmProgBar(const frmProgBar&) = delete;
  frmProgBar& operator=(const frmProgBar&) = delete;
  frmProgBar(frmProgBar&&) = delete;
  frmProgBar& operator=(frmProgBar&&) = delete;
  ~frmProgBar() override;

 protected:
  void OnLoad() override;
  void OnActivate() override;

 private:
  void Hear(BarCall call, const platform::Variant& value);
  void Apply(BarCall call, const platform::Variant& value);

  platform::Ref<clsPass> pass_;
  std::string head_;
  std::string caption_;  // kept for its room: a message comes with every period of a ledger
  platform::ProgressBar& bar_;
  platform::Label& message_;
};

}  // namespace component

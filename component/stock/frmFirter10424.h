#pragma once

#include "component/filter/CategoryLevels.h"
#include "component/filter/TOVRptFilterDialog.h"
#include "component/stock/frmSelStock.h"

namespace component {

// The filter of the available stock report: the closing date or "now", items, a set of warehouses from a
// tree, and which terms of the sum count. A date before the start of the account is refused.
class frmFirter10424 final : public TOVRptFilterDialog {
 public:
  frmFirter10424();

  // Cuts the set of warehouses in "FStockID" down to what the present user may see, and puts the rest into
  // "strStock" and how it reads into "sShowList". An error ends it; keys not yet written stay as they are.
  static platform::Variant GetItemRight(const platform::Ref<platform::Dictionary>& scope);

  platform::Variant Invoke(std::string_view member, platform::CallKind kind,
                           std::span<platform::Variant> arguments) override;

 protected:
  void OnLoad() override;
  void OnActivate() override;
  void OnFilterEvent(std::string_view event, std::span<platform::Variant> arguments) override;
  bool AcceptCollected(platform::Dictionary& filter) override;
  void AddKeys(platform::Dictionary& filter) override;
  void ResetFields() override;
  void OnSchemeActivated() override;
  std::string SchemeText(const DialogField& field) const override;
  platform::Variant FromScheme(const DialogField& field, const platform::Variant& stored) override;

 private:
  void BuildFormulaPanel();
  void OnTimeRule(int clicked);
  void ChooseStocks();
  platform::CheckBox& Check(int index) const;

  CategoryLevels levels_;
  std::string stockNumbers_;
  std::string stockNames_;
  bool quiet_ = false;  // fields change by themselves, not by the user
  bool shown_ = false;
};

}  // namespace component

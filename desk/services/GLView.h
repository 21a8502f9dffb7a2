#pragma once

#include <string>

#include "desk/services/Service.h"

namespace desk {

// What a lookup hands back: the base data picked.
class LookupChoice final : public platform::Exposed<LookupChoice> {
 public:
  explicit LookupChoice(Picked picked) : picked_(std::move(picked)) {}

  platform::Variant Number() const { return picked_.number; }
  platform::Variant ShortNumber() const { return picked_.shortNumber; }
  platform::Variant Detail() const { return picked_.detail; }

  static constexpr std::string_view kClassName = "LookupChoice";
  static constexpr auto kOperations =
      platform::Operations(platform::PropertyGet<&LookupChoice::Number>("Number"),
                           platform::PropertyGet<&LookupChoice::ShortNumber>("FShortNumber"),
                           platform::PropertyGet<&LookupChoice::Detail>("Detail"));

 private:
  Picked picked_;
};

class LookupOutcome final : public platform::Exposed<LookupOutcome> {
 public:
  explicit LookupOutcome(Picked picked) : choice_(platform::MakeRef<LookupChoice>(std::move(picked))) {}

  platform::Ref<LookupChoice> ReturnObject() const { return choice_; }

  static constexpr std::string_view kClassName = "LookupOutcome";
  static constexpr auto kOperations =
      platform::Operations(platform::PropertyGet<&LookupOutcome::ReturnObject>("ReturnObject"));

 private:
  platform::Ref<LookupChoice> choice_;
};

// Lookups of base data. Each lets the user pick and returns a LookupOutcome, or nothing after a cancel.
class GLView final : public Served<GLView> {
 public:
  using Served::Served;
  using Outcome = platform::Ref<LookupOutcome>;

  Outcome ItemLookUp(std::int32_t dataType, const std::string& text, const std::string& filter,
                     platform::Variant& options) const;
  Outcome CurrencyLookup(const std::string& text) const;
  Outcome SettTypeLookup(const std::string& text) const;
  Outcome AccountLookup(const std::string& text) const;
  Outcome UnitLookup(std::int32_t group, const std::string& text) const;
  Outcome SubMesLookup(std::int32_t dataType, const std::string& text) const;

  static constexpr std::string_view kClassName = "TOVEBCGLView.GLView";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&GLView::ItemLookUp>("ItemLookUp", "DataType", "Text", "Filter", "Options"),
      platform::Method<&GLView::CurrencyLookup>("CurrencyLookup", "Text"),
      platform::Method<&GLView::SettTypeLookup>("SettTypeLookup", "Text"),
      platform::Method<&GLView::AccountLookup>("AccountLookup", "Text"),
      platform::Method<&GLView::UnitLookup>("UnitLookup", "Group", "Text"),
      platform::Method<&GLView::SubMesLookup>("SubMesLookup", "DataType", "Text"));

 private:
  Outcome Pick(const LookupQuery& query) const;
};

// The list of batches in stock.
class BaseList final : public Served<BaseList> {
 public:
  using Served::Served;

  void SetFilterItem(const std::string& filterItem) { query_.filterItem = filterItem; }
  void SetFilter(const std::string& filter) { query_.filter = filter; }
  void SetKeyWord(const platform::Variant& keyWord) { query_.keyWord = keyWord; }
  // Positioned on the row picked; nothing after a cancel.
  platform::Ref<platform::Recordset> Show(const platform::Variant& /*modal*/) const {
    return Behind().PickBatch(query_);
  }

  static constexpr std::string_view kClassName = "TOVBaseList.BaseList";
  static constexpr auto kOperations =
      platform::Operations(platform::PropertyPut<&BaseList::SetFilterItem>("FilterItem", "Value"),
                           platform::PropertyPut<&BaseList::SetFilter>("Filter", "Value"),
                           platform::PropertyPut<&BaseList::SetKeyWord>("KeyWord", "Value"),
                           platform::Method<&BaseList::Show>("Show", "Modal"));

 protected:
  platform::Variant Written(std::string_view property) const override;

 private:
  BatchQuery query_;
};

}  // namespace desk

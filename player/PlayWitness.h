#pragma once

#include "desk/Witness.h"
#include "player/Json.h"
#include "player/Transcript.h"

namespace player {

// Writes what passes between the component and the desk into the transcript.
class PlayWitness final : public desk::Witness {
 public:
  // Both borrowed.
  PlayWitness(Transcript& transcript, const Names& names) : transcript_(transcript), names_(names) {}

  void OnCreated(std::string_view programmaticId) override;
  void OnReleased(std::string_view programmaticId) override;
  void OnCalled(std::string_view programmaticId, std::string_view method, Arguments arguments) override;
  void OnGot(std::string_view programmaticId, std::string_view property, Arguments index) override;
  void OnPut(std::string_view programmaticId, std::string_view property, Arguments index,
             const platform::Variant& value) override;
  void OnSql(std::string_view text) override;
  void OnLookup(const desk::LookupQuery& query) override;
  void OnUsage(std::string_view code, std::string_view text) override;

 private:
  Json List(Arguments arguments) const;

  Transcript& transcript_;
  const Names& names_;
};

}  // namespace player

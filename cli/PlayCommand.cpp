#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "desk/Host.h"
#include "player/BookBackend.h"
#include "player/Player.h"

namespace cli {
namespace {

int PlayScript(const std::string& script) {
  const player::PlayOptions options{.component = desk::DefaultComponentPath(), .openBook = player::OpenBook};
  if (script == "-") return player::Play(std::cin, std::cout, std::cerr, options);
  std::ifstream file(script, std::ios::binary);
  if (!file) throw UsageError("cannot read the script " + script + "; name a file, or - for standard input");
  return player::Play(file, std::cout, std::cerr, options);
}

}  // namespace

void AddPlayCommand(CLI::App& app, int& status) {
  auto script = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand(
      "play", "Play a script against the component and write down all that crosses its border.");
  command->add_option("script", *script, "The script, a JSON array of steps; - for standard input")
      ->required();
  command->callback([script, &status] { status = PlayScript(*script); });
}

}  // namespace cli

#include <iostream>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "desk/Host.h"
#include "platform/object/LoadedComponent.h"

namespace cli {

void AddListCommand(CLI::App& app, int& status) {
  CLI::App* command =
      app.add_subcommand("list", "List the reports: programmatic id, number and name, separated by tabs.");
  command->callback([&status] {
    const platform::LoadedComponent component(desk::DefaultComponentPath().string());
    for (const platform::ComponentClass& served : component.Classes()) {
      std::cout << served.programmaticId << '\t' << served.number << '\t' << served.title << '\n';
    }
    status = 0;
  });
}

}  // namespace cli

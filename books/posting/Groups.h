#pragma once

#include <span>
#include <vector>

#include "books/database/Connection.h"
#include "books/posting/Document.h"

namespace books::posting {

// Assemblies pass the cost of one item on to another, so the items that they tie together are valued
// together.

// The item with all that audited assemblies and disassemblies tie to it, in order of their ids.
std::vector<Id> GroupOf(database::Connection& connection, Id item);

// All groups that hold one of the items; for many items at once.
std::vector<std::vector<Id>> GroupsOf(database::Connection& connection, std::span<const Id> items);

}  // namespace books::posting

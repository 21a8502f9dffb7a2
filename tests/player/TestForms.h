#pragma once

namespace player_tests {

// Registers "Test.Shower" while it lives: an object that shows small forms, and asks and points on demand.
//   Show(name)      "Plain": every kind of control; "Nested": the same, cmdNested shows another; "Scheme" and
//   "Report": a field in one of the two filter
//                   controls, answering the filter's dictionary; "Box": a progress box
//   Ask(buttons)    a message box, answering what was chosen
//   Relay(class)    calls M of a new object and answers what came back in its argument
//   Point           sets the pointer
class RegisteredForms {
 public:
  RegisteredForms();
  RegisteredForms(const RegisteredForms&) = delete;
  RegisteredForms& operator=(const RegisteredForms&) = delete;
  RegisteredForms(RegisteredForms&&) = delete;
  RegisteredForms& operator=(RegisteredForms&&) = delete;
  ~RegisteredForms();
};

}  // namespace player_tests

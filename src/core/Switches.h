#pragma once
// The on/off settings of the menus (block popups, kill popups, silent pages,
// remove images, remove Flash): each keeps its state in the checks of its
// tools. Every copy of a switch's key, in every band and in the bar's own
// collection, shows the same state, so the menus, the options dialog and the
// settings file all read and change one value.
#include "Commands.h"

#include <initializer_list>

class CommandDispatcher;

namespace commandbar {
class CommandBar;
} // namespace commandbar

namespace switches {

bool isOn(const commandbar::CommandBar& bar, cmd::Command command);
void set(commandbar::CommandBar& bar, cmd::Command command, bool on);
// Registers the commands that do nothing but flip their switch.
void registerFlips(commandbar::CommandBar& bar, CommandDispatcher& commands,
                   std::initializer_list<cmd::Command> flips);

} // namespace switches

#pragma once
// Registers the commands that open, show, close and steer tabs.
class ActiveTabDisplay;
class BarEventRouter;
class CommandDispatcher;
class TabStrip;

void registerTabCommands(CommandDispatcher& commands, BarEventRouter& events, TabStrip& tabs,
                         ActiveTabDisplay& display);

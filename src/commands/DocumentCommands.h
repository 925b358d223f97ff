#pragma once
// The commands on the page as a document: save it, set up the paper, preview
// and print it, show its properties, switch its scroll bars and its editing
// mode. A page that does not answer (a crashed or blank one) makes each of
// them do nothing.
class CommandDispatcher;

namespace platform {
class Dialogs;
} // namespace platform

class DocumentCommands
{
public:
    DocumentCommands(platform::Dialogs& dialogs, CommandDispatcher& commands);
};

#pragma once
// The caption of the security indicator for a lock state, cut from the label
// list of the tool: the text before the first "|" for state 0; as many
// characters as the position of that "|", from just after it, for state 1;
// from after the second "|" to the last character but one for state 2; the
// cipher names for 3 to 6 (which the engine never reports); nothing else.
// Label lists are laid out to fit these cuts (see docs/page-protection.md).
#include <QString>

QString securityCaption(const QString& labels, int state);

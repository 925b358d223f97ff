#pragma once
// The one address a user may give on the command line. Engine switches
// (arguments beginning "--") are not part of it; every double quote is removed.
#include <QStringList>

#include <optional>

QString commandLineAddress(const QStringList& arguments);

// What to print and end with, without starting: the usage for "--help", the
// version for "--version"; nothing for an ordinary start.
std::optional<QString> commandLineAnswer(const QStringList& arguments, const QString& version);

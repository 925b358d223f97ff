#pragma once
// The one address a user may give on the command line. Engine switches
// (arguments beginning "--") are not part of it; every double quote is removed.
#include <QStringList>

QString commandLineAddress(const QStringList& arguments);

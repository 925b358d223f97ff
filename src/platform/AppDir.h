#pragma once
// The program's folder, where its skin, settings and language files live:
// QUB_APPDIR when set, else the executable's folder; always one trailing "/".
#include <QString>

namespace platform {

QString appDir();

} // namespace platform

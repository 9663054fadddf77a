// Who this program is: its names and its version.
#pragma once

#include <QString>

/// Product name: the title of message boxes and the first word of window titles.
QString ProductName();

/// "major.minor.revision", each in plain decimal, e.g. "1.2.35".
QString VersionText();

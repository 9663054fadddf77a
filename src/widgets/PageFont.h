// The font in which columns of Japanese text line up.
#pragma once

#include <QFont>

/// MS Gothic where there is one, else IPAGothic, else a fixed-pitch Japanese font of the system. Among fonts that serve
/// several countries the one made for Japan is taken, which has the Japanese shapes of the kanji.
QFont PageFont();

/// Whether there is such a font. Where there is none, a font of another script stands in for it, and what it lacks
/// comes from wherever the system finds it.
bool HasPageFont();

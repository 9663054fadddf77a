// The text of a piece of HTML, as flash-card programs export their cards.
#pragma once

#include <QString>
#include <QStringView>

/// A piece of HTML without its tags: those that begin a line or a block become one blank, and so do line ends; all
/// other tags go. The usual named entities and all numbered ones become their characters. "[sound:…]", by which cards
/// name a recording, goes too. What is no tag and no entity stays as it is.
QString TextOfHtml(QStringView html);

// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Icons of lines, painted from paths, so that they are sharp at every size and need no plugin for pictures.
#pragma once

#include <QIcon>

class QColor;
class QFontMetrics;
class QPainter;
class QRect;
class QRectF;

enum class Icon
{
    Open,     ///< ファイル選択
    Reload,   ///< 再読込
    Edit,     ///< 編集
    Search,   ///< 検索
    Filter,   ///< 苦手だけ
    Hard,     ///< 苦手
    Speak,    ///< 読み上げ
    Settings, ///< 設定
    Help,     ///< 使い方
    More,     ///< » menu
    PageOnly, ///< ページだけ
    Bars,     ///< バーを戻す
    Plus,     ///< 大きく
    Minus,    ///< 小さく
    Down,     ///< menu arrow
    New,      ///< 新しい学習ファイル
    Write,    ///< 書く・ペン
    Picture,  ///< 図を入れる
    Undo,     ///< 元に戻す
    Redo,     ///< やり直す
    Save,     ///< 保存
    Warn,     ///< remark
    Check,    ///< 直す
    Print,    ///< 印刷
    Notebook, ///< 苦手帳
    File,     ///< study file row
    Others,   ///< その他
};

/// The number of icons; the enumeration counts them from 0.
constexpr int IconCount = int(Icon::Others) + 1;

/// Paints an icon into a square. @param hardColour  of the corner of Icon::Hard; invalid for that of the lines
void PaintIcon(QPainter *painter, Icon icon, const QRectF &square, const QColor &colour, const QColor &hardColour);

/// Paints the corner that marks a hard word, at the end of a line of text before its last characters, a number.
/// @param font  of the number
void PaintHardCorner(QPainter *painter, const QRect &line, const QString &number, const QFontMetrics &font,
                     const QColor &colour);

/// An icon for a button, in the colour that the desktop's palette has for the text of buttons.
QIcon ButtonIcon(Icon icon);

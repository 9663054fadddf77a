// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The user's settings and the ini file that stores them: section "setting" of a private profile beside the executable.
// Number formats do not depend on the locale.
#pragma once

#include "platform/modProfile.h"
#include "widgets/PageColourChoice.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <array>

/// A record of settings. Three are kept for the whole run: the current settings, the defaults, which are also the lower
/// bounds, and the upper bounds.
struct Settings
{
    float FontSize = 9.75f;                             ///< points: 9.75, 11.25 or 12.75
    int LineSpace = 4;                                  ///< pixels between two lines of the page
    int FormLeft = 0;                                   ///< left edge of the study window, pixels
    QString TextEditor = QStringLiteral("notepad.exe"); ///< a bare file name or a full path
    bool bolDispLineNum = true;                         ///< whether the page shows line numbers
    PageColourChoice pageColour = PageColourChoice::Desktop;
    bool isWrapping = true; ///< whether a line wider than the page continues in the next row
    QSize formSize;         ///< size of the study window when it is not maximised, pixels; empty if missing or invalid
    bool isFormMaximized = false;
    int zoom = 0; ///< of the page, percent, one of ZoomSteps; 0 if missing or invalid
};

/// Width of the blanks on a printed sheet.
enum class BlankWidth
{
    AsInText, ///< as in the study window, so that columns stay aligned
    Double,   ///< twice that, and enough for handwriting
    Equal,    ///< the same for all, so that it tells nothing of the answers
};

/// How sheets are printed.
struct PrintSettings
{
    bool withAnswers = true;
    BlankWidth blankWidth = BlankWidth::Double;
    int lineGapMm = 5; ///< between two lines
    int columns = 1;   ///< of text: 1 or 2
    int points = 12;   ///< size of the text

    bool operator==(const PrintSettings &) const = default;
};

/// Bounds of the PrintSettings, both included.
constexpr int MinLineGapMm = 2;
constexpr int MaxLineGapMm = 12;
constexpr int MaxPrintColumns = 2;
constexpr int MinPrintPoints = 10;
constexpr int MaxPrintPoints = 18;

/// Maximum length of a setting, in characters; longer values are silently truncated.
constexpr int LongestSetting = 99;

/// The defaults, which are also the lower bounds.
Settings DefaultSettings();

/// The upper bounds. @param formLeft  largest left edge, in pixels, at which the study window still fits on the screen
Settings UpperBounds(int formLeft);

/// The font sizes that the program offers, in points.
inline constexpr std::array FontSizes{9.75f, 11.25f, 12.75f};

/// A font size as the file and the settings window show it, e.g. "9.75".
QString FontSizeText(float points);

/// The bounds of the line spacing, as the settings window shows them: "(4-6)".
QString LineSpaceRange(const Settings &lower, const Settings &upper);

/// Whether a text is a whole number within the bounds of the line spacing.
bool IsLineSpaceValid(const QString &text, const Settings &lower, const Settings &upper);

/// The settings window's message for an invalid line spacing.
QString LineSpaceRefusal(const QString &text, const Settings &lower, const Settings &upper);

/// "iniファイルの設定値が範囲外でした。" with the label, the value that was read and the default used instead.
QString OutOfRangeMessage(const QString &label, const QString &value, const QString &defaultText);

/// "指定のテキストエディタが見つかりません。" with the editor setting and the default used instead.
QString EditorMissingMessage(const QString &editor);

/// Whether an editor setting is "notepad.exe", in any case, which stands for the editor that the desktop brings.
bool IsDesktopEditor(const QString &editor);

/// Whether an editor setting is usable: it must exist, except "notepad.exe", in any case, which is always accepted.
bool IsEditorUsable(const QString &editor);

class SettingsFile
{
  public:
    /// @param path  full path: the executable's folder and base name with ".ini"
    explicit SettingsFile(const QString &path);

    bool Exists() const;

    /// Reads the file once, for all settings, and replaces values that are out of bounds, in memory only.
    /// @param messages  one text is appended per replaced value, in the order of the checks
    Settings Read(const Settings &defaults, const Settings &upper, QStringList *messages) const;

    /// How sheets are printed. Missing and invalid values are the defaults.
    PrintSettings ReadPrint() const;

    // These return false if the file could not be written; it is then unchanged.

    /// Writes FontSize, LineSpace, TextEditor and bolDispLineNum.
    [[nodiscard]] bool WriteFileIniEx(const Settings &settings) const;

    /// Writes the study window's left edge, in pixels, without syncing, since WriteFormSize follows. A negative one is
    /// not written, so the previous value is kept.
    [[nodiscard]] bool WriteFileIniFormPos(int leftPx) const;

    /// Writes the colours of the page and whether lines wrap.
    [[nodiscard]] bool WritePageLook(const Settings &settings) const;

    /// Writes the study window's size when it is not maximised, in pixels, unless that is empty, and whether it is.
    [[nodiscard]] bool WriteFormSize(const QSize &sizePx, bool isMaximized) const;

    /// Writes the page zoom, in percent.
    [[nodiscard]] bool WriteZoom(int percent) const;

    /// Writes how sheets are printed.
    [[nodiscard]] bool WritePrint(const PrintSettings &print) const;

  private:
    ProfileSection ReadIni() const;
    [[nodiscard]] bool WriteIni(const std::vector<ProfileEntry> &entries, OnDisk onDisk = OnDisk::AtOnce) const;

    QString m_path;
};

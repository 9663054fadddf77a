// The learner's settings and the ini file that keeps them: section "setting" of a private profile beside the
// executable. Numbers are read and written the same in every locale.
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <array>

/// Which colours the page has.
enum class PageColourChoice
{
    Light,
    Dark,
    Desktop, ///< those that suit the desktop's
};

/// One record of settings. Three are kept for the whole run: the current one, the defaults, which are the lower bounds
/// too, and the upper bounds.
struct Settings
{
    float FontSize = 9.75f;                             ///< points: 9.75, 11.25 or 12.75
    int LineSpace = 4;                                  ///< pixels between two lines of the page
    int FormLeft = 0;                                   ///< left edge of the study window, pixels
    QString TextEditor = QStringLiteral("notepad.exe"); ///< a bare file name or a full path
    bool bolDispLineNum = true;                         ///< whether the page shows line numbers
    PageColourChoice pageColour = PageColourChoice::Light;
};

/// Longest text of a setting, in characters; what does not fit is cut without a word.
constexpr int LongestSetting = 99;

/// The defaults, which are also the lower bounds.
Settings DefaultSettings();

/// The upper bounds. @param formLeft  largest left edge, in pixels, at which the study window fits on the screen
Settings UpperBounds(int formLeft);

/// The font sizes that the program offers, in points.
inline constexpr std::array FontSizes{9.75f, 11.25f, 12.75f};

/// Whether a font size is one of those.
bool IsFontSizeOffered(float points);

/// A font size as the file and the settings window show it, e.g. "9.75".
QString FontSizeText(float points);

/// The bounds of the line spacing, as the settings window shows them: "(4-6)".
QString LineSpaceRange(const Settings &lower, const Settings &upper);

/// Whether a text is a whole number within the bounds of the line spacing.
bool IsLineSpaceValid(const QString &text, const Settings &lower, const Settings &upper);

/// The settings window's message for a line spacing that is not.
QString LineSpaceRefusal(const QString &text, const Settings &lower, const Settings &upper);

/// "iniファイルの設定値が範囲外でした。" with the label, the value that was read and the default taken for it.
QString OutOfRangeMessage(const QString &label, const QString &value, const QString &defaultText);

/// "指定のテキストエディタが見つかりません。" with the editor's text and the default taken for it.
QString EditorMissingMessage(const QString &editor);

/// Whether an editor text may be used: "notepad.exe", in any case, is never looked for; all else must exist.
bool IsEditorUsable(const QString &editor);

class SettingsFile
{
  public:
    /// @param path  the executable's folder, its base name and ".ini"
    explicit SettingsFile(const QString &path);

    bool Exists() const;

    /// Reads all settings and repairs what is out of its bounds in memory; the file stays as it is.
    /// @param messages  one text for each repair, in the order of the checks
    Settings Read(const Settings &defaults, const Settings &upper, QStringList *messages) const;

    /// Writes all settings but FormLeft and the page's colours. @return false when the file could not be written; it is
    /// then unchanged or holds some of the settings, each of them whole
    bool WriteFileIniEx(const Settings &settings) const;

    /// Writes the study window's left edge, in pixels. A negative one is not written: the previous value stays.
    /// @return false when the file could not be written; it is then unchanged
    bool WriteFileIniFormPos(int leftPx) const;

    /// Writes which colours the page has. @return false when the file could not be written; it is then unchanged
    bool WritePageColour(PageColourChoice choice) const;

    /// The size of the study window that the file holds, in pixels; empty when it holds none or something odd.
    QSize ReadFormSize() const;

    /// Writes the study window's size, in pixels. @return false when the file could not be written
    bool WriteFormSize(const QSize &sizePx) const;

    /// The page's zoom that the file holds, in percent; 0 when it holds none or none of ZoomSteps.
    int ReadZoom() const;

    /// Writes the page's zoom, in percent. @return false when the file could not be written
    bool WriteZoom(int percent) const;

    /// Whether the answers are printed with a sheet; true unless the file says otherwise.
    bool ReadPrintAnswers() const;

    /// Writes whether they are. @return false when the file could not be written
    bool WritePrintAnswers(bool withAnswers) const;

  private:
    PageColourChoice ReadPageColour() const;
    QString ReadIni(const QString &key, const QString &defaultText) const;
    bool WriteIni(const QString &key, const QString &value) const;

    QString m_path;
};

// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "settings/modSettings.h"

#include "base/modLog.h"
#include "platform/modProcess.h"
#include "settings/modZoom.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView DefaultEditor = u"notepad.exe";
// In the order of the enumeration.
constexpr QStringView PageColourNames[] = {u"Light", u"Dark", u"Soft", u"SoftDark", u"Desktop"};
constexpr QStringView BlankWidthNames[] = {u"Text", u"Double", u"Equal"};

void RepairFontSize(const QString &text, const Settings &defaults, Settings *settings, QStringList *messages)
{
    bool isNumber = false;
    settings->FontSize = text.toFloat(&isNumber);
    if (isNumber && std::ranges::find(FontSizes, settings->FontSize) != FontSizes.end())
        return;
    settings->FontSize = defaults.FontSize;
    *messages += OutOfRangeMessage(u"フォントサイズ："_s, text, FontSizeText(defaults.FontSize));
}

bool IsWholeNumberWithin(const QString &text, int lowest, int highest)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= lowest && number <= highest;
}

/// Parses an integer within [lowest, highest]; any other text gives lowest, which is the default, and adds a message.
int RepairNumber(const QString &text, int lowest, int highest, const QString &label, QStringList *messages)
{
    if (IsWholeNumberWithin(text, lowest, highest))
        return text.toInt();
    *messages += OutOfRangeMessage(label, text, QString::number(lowest));
    return lowest;
}

QString BooleanText(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

/// The value of an enumeration by its name; the default if the name is missing or unknown, which does not warrant a
/// message.
template <typename Choice, size_t count>
Choice ChoiceOf(const QString &name, const QStringView (&names)[count], Choice byDefault)
{
    for (size_t i = 0; i < count; ++i)
        if (name.compare(names[i], Qt::CaseInsensitive) == 0)
            return Choice(i);
    return byDefault;
}

/// The same for a whole number with bounds.
int NumberOf(const QString &text, int lowest, int highest, int byDefault)
{
    return IsWholeNumberWithin(text, lowest, highest) ? text.toInt() : byDefault;
}

} // namespace

Settings DefaultSettings()
{
    return Settings();
}

Settings UpperBounds(int formLeft)
{
    Settings upper;
    upper.FontSize = 12.75f;
    upper.LineSpace = 6;
    upper.FormLeft = formLeft;
    return upper;
}

QString FontSizeText(float points)
{
    return QString::number(double(points), 'g', 6);
}

QString LineSpaceRange(const Settings &lower, const Settings &upper)
{
    return u'(' + QString::number(lower.LineSpace) + u'-' + QString::number(upper.LineSpace) + u')';
}

bool IsLineSpaceValid(const QString &text, const Settings &lower, const Settings &upper)
{
    return IsWholeNumberWithin(text, lower.LineSpace, upper.LineSpace);
}

QString LineSpaceRefusal(const QString &text, const Settings &lower, const Settings &upper)
{
    return u"行間の設定値が範囲外です。\r\n    行間："_s + text + u"\r\n"_s + LineSpaceRange(lower, upper) +
           u"の整数を指定してください。\r\n"_s;
}

QString OutOfRangeMessage(const QString &label, const QString &value, const QString &defaultText)
{
    return u"iniファイルの設定値が範囲外でした。\r\n    "_s + label + value + u"\r\nデフォルト値"_s + defaultText +
           u"に設定します。\r\n"_s;
}

QString EditorMissingMessage(const QString &editor)
{
    return u"指定のテキストエディタが見つかりません。\r\n    テキストエディタ："_s + editor + u"\r\nデフォルト値"_s +
           DefaultEditor + u"に設定します。\r\n"_s;
}

bool IsDesktopEditor(const QString &editor)
{
    return editor.compare(DefaultEditor, Qt::CaseInsensitive) == 0;
}

bool IsEditorUsable(const QString &editor)
{
    return IsDesktopEditor(editor) || ProgramExists(editor);
}

SettingsFile::SettingsFile(const QString &path) : m_path(path) {}

bool SettingsFile::Exists() const
{
    return QFileInfo::exists(m_path);
}

Settings SettingsFile::Read(const Settings &defaults, const Settings &upper, QStringList *messages) const
{
    const ProfileSection ini = ReadIni();
    Settings settings;
    RepairFontSize(ini.Value(u"FontSize"_s, FontSizeText(defaults.FontSize)), defaults, &settings, messages);
    settings.LineSpace = RepairNumber(ini.Value(u"LineSpace"_s, QString::number(defaults.LineSpace)),
                                      defaults.LineSpace, upper.LineSpace, u"行間："_s, messages);
    settings.FormLeft = RepairNumber(ini.Value(u"FormLeft"_s, QString::number(defaults.FormLeft)), defaults.FormLeft,
                                     upper.FormLeft, u"フォームLeft："_s, messages);
    settings.TextEditor = ini.Value(u"TextEditor"_s, defaults.TextEditor);
    if (settings.TextEditor.isEmpty())
        settings.TextEditor = DefaultEditor.toString();
    if (!IsEditorUsable(settings.TextEditor)) {
        *messages += EditorMissingMessage(settings.TextEditor);
        settings.TextEditor = DefaultEditor.toString();
    }
    const QString lineNumbers = ini.Value(u"bolDispLineNum"_s, BooleanText(defaults.bolDispLineNum));
    settings.bolDispLineNum = lineNumbers.compare(u"true", Qt::CaseInsensitive) == 0;
    settings.pageColour = ChoiceOf(ini.Value(u"PageColour"_s), PageColourNames, defaults.pageColour);
    settings.isWrapping = ini.Value(u"Wrap"_s).compare(u"false", Qt::CaseInsensitive) != 0;
    const QSize size(ini.Value(u"FormWidth"_s).toInt(), ini.Value(u"FormHeight"_s).toInt());
    settings.formSize = size.isEmpty() ? QSize() : size;
    settings.isFormMaximized = ini.Value(u"FormMaximized"_s).compare(u"true", Qt::CaseInsensitive) == 0;
    const int zoom = ini.Value(u"Zoom"_s).toInt();
    settings.zoom = IsZoomStep(zoom) ? zoom : 0;
    return settings;
}

// The font size is read as "FontSize" and written as "Fontsize". Keys are case-insensitive, so both are the same entry;
// the written spelling is kept because it is the one in existing files.
bool SettingsFile::WriteFileIniEx(const Settings &settings) const
{
    WriteTrace(u"WriteFileIniEx()");
    return WriteIni({{u"Fontsize"_s, FontSizeText(settings.FontSize)},
                     {u"LineSpace"_s, QString::number(settings.LineSpace)},
                     {u"TextEditor"_s, settings.TextEditor},
                     {u"bolDispLineNum"_s, BooleanText(settings.bolDispLineNum)}});
}

bool SettingsFile::WriteFileIniFormPos(int leftPx) const
{
    WriteTrace(u"WriteFileIniFormPos()");
    return leftPx < 0 || WriteIni({{u"FormLeft"_s, QString::number(leftPx)}}, OnDisk::Later);
}

bool SettingsFile::WritePageLook(const Settings &settings) const
{
    return WriteIni({{u"PageColour"_s, PageColourNames[int(settings.pageColour)].toString()},
                     {u"Wrap"_s, BooleanText(settings.isWrapping)}});
}

bool SettingsFile::WriteFormSize(const QSize &sizePx, bool isMaximized) const
{
    std::vector<ProfileEntry> entries;
    if (!sizePx.isEmpty())
        entries = {{u"FormWidth"_s, QString::number(sizePx.width())},
                   {u"FormHeight"_s, QString::number(sizePx.height())}};
    entries.emplace_back(u"FormMaximized"_s, BooleanText(isMaximized));
    return WriteIni(entries);
}

bool SettingsFile::WriteZoom(int percent) const
{
    return WriteIni({{u"Zoom"_s, QString::number(percent)}});
}

PrintSettings SettingsFile::ReadPrint() const
{
    const ProfileSection ini = ReadIni();
    PrintSettings print;
    print.withAnswers = ini.Value(u"PrintAnswers"_s).compare(u"false", Qt::CaseInsensitive) != 0;
    print.blankWidth = ChoiceOf(ini.Value(u"PrintBlankWidth"_s), BlankWidthNames, print.blankWidth);
    print.lineGapMm = NumberOf(ini.Value(u"PrintLineGap"_s), MinLineGapMm, MaxLineGapMm, print.lineGapMm);
    print.columns = NumberOf(ini.Value(u"PrintColumns"_s), 1, MaxPrintColumns, print.columns);
    print.points = NumberOf(ini.Value(u"PrintPointSize"_s), MinPrintPoints, MaxPrintPoints, print.points);
    return print;
}

bool SettingsFile::WritePrint(const PrintSettings &print) const
{
    return WriteIni({{u"PrintAnswers"_s, BooleanText(print.withAnswers)},
                     {u"PrintBlankWidth"_s, BlankWidthNames[int(print.blankWidth)].toString()},
                     {u"PrintLineGap"_s, QString::number(print.lineGapMm)},
                     {u"PrintColumns"_s, QString::number(print.columns)},
                     {u"PrintPointSize"_s, QString::number(print.points)}});
}

ProfileSection SettingsFile::ReadIni() const
{
    return ProfileSection(m_path, u"setting"_s, LongestSetting);
}

bool SettingsFile::WriteIni(const std::vector<ProfileEntry> &entries, OnDisk onDisk) const
{
    return WriteProfile(m_path, u"setting"_s, entries, onDisk);
}

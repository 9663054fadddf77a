// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// End-to-end tests on Windows: the program runs as a process in a folder of its own, is controlled by key presses and
// observed through the Windows API.
#include "base/modProduct.h"
#include "support/Query.h"
#include "support/TestFiles.h"
#include "support/WaitFor.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <gtest/gtest.h>
#include <windows.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A visible window of a process (0: any process) whose title matches a regular expression; nullptr if there is none.
HWND FindShown(qint64 process, const QString &title)
{
    std::vector<HWND> windows;
    const auto add = [](HWND window, LPARAM list) {
        reinterpret_cast<std::vector<HWND> *>(list)->push_back(window);
        return TRUE;
    };
    EnumWindows(add, reinterpret_cast<LPARAM>(&windows));
    for (const HWND window : windows) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        wchar_t text[200] = {};
        GetWindowTextW(window, text, 200);
        if (IsWindowVisible(window) && (process == 0 || process == owner) &&
            QRegularExpression(title).match(QString::fromWCharArray(text)).hasMatch())
            return window;
    }
    return nullptr;
}

bool HasFocus(HWND window)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetForegroundWindow() == window && GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) &&
           info.hwndFocus == window;
}

class RunningProgram
{
  public:
    explicit RunningProgram(const QString &folder)
    {
        m_process.start(folder + u"\\Kotoban.exe"_s, QStringList());
        EXPECT_TRUE(m_process.waitForStarted(LongestWaitMs)) << folder.toStdString();
    }

    /// Waits for a window of the program whose title matches a regular expression. @return nullptr if none appears
    HWND Window(const QString &title) const
    {
        HWND window = nullptr;
        EXPECT_TRUE(WaitFor([&] { return (window = FindShown(m_process.processId(), title)) != nullptr; }))
            << title.toStdString();
        return window;
    }

    bool IsShown(const QString &title) const
    {
        return FindShown(m_process.processId(), title) != nullptr;
    }

    bool WaitUntilGone(const QString &title) const
    {
        return WaitFor([&] { return !IsShown(title); });
    }

    /// Waits for the process to exit. @return its exit code, or 259 (STILL_ACTIVE) if it does not
    int ExitCode()
    {
        return WaitFor([this] { return !IsRunning(); }) ? m_process.exitCode() : 259;
    }

    bool IsRunning() const
    {
        return m_process.state() == QProcess::Running;
    }

  private:
    QProcess m_process;
};

/// Presses and releases a key in a window, which takes it after all before it, with the focus or without.
void Press(HWND window, int key)
{
    const LPARAM once = LPARAM(MapVirtualKeyW(UINT(key), MAPVK_VK_TO_VSC)) << 16 | 1;
    PostMessageW(window, WM_KEYDOWN, WPARAM(key), once);
    PostMessageW(window, WM_KEYUP, WPARAM(key), once | LPARAM(0xC0000000));
}

/// Presses a key in a message until it closes; its buttons are disabled at first.
bool PressUntilClosed(HWND message, int key)
{
    return WaitFor([=] {
        if (!IsWindowVisible(message))
            return true;
        Press(message, key);
        return false;
    });
}

/// Presses Alt and a key in a window until a condition holds. Only the window with the focus takes them, and one that
/// has just closed may briefly take the focus again.
bool PressAltUntil(HWND window, int key, const std::function<bool()> &isSo)
{
    return WaitFor([&] {
        if (isSo())
            return true;
        if (!HasFocus(window)) {
            SetForegroundWindow(window);
            return false;
        }
        INPUT inputs[4] = {};
        for (int i = 0; i < 4; ++i) {
            inputs[i].type = INPUT_KEYBOARD;
            inputs[i].ki.wVk = WORD(i == 0 || i == 3 ? VK_MENU : key);
            inputs[i].ki.wScan = WORD(MapVirtualKeyW(inputs[i].ki.wVk, MAPVK_VK_TO_VSC));
            inputs[i].ki.dwFlags = i < 2 ? 0 : KEYEVENTF_KEYUP;
        }
        SendInput(4, inputs, sizeof(INPUT));
        return false;
    });
}

class ProgramTest : public testing::Test
{
  protected:
    /// Makes a fresh application folder. @return its path with the system's separators
    QString MakeFolder(const QString &name)
    {
        const QDir built(QStringLiteral(APPLICATION_FOLDER));
        for (const QString &folder : {u"db"_s, u"db_backup"_s, u"rec"_s, u"txt"_s, u"wav"_s})
            QDir(temporary.Path(name)).mkpath(folder);
        for (const QString &file : {u"Kotoban.exe"_s, u"txt/はじめに.txt"_s})
            EXPECT_TRUE(QFile::copy(built.filePath(file), temporary.Path(name + u'/' + file))) << file.toStdString();
        return QDir::toNativeSeparators(temporary.Path(name));
    }

    /// @return the file selection
    static HWND LogIn(const RunningProgram &program)
    {
        const HWND login = program.Window(u"ログイン画面"_s);
        for (const char key : {'H', 'A', 'N', 'A', 'K', 'O'})
            Press(login, key);
        Press(login, VK_RETURN);
        return program.Window(u"ファイル選択"_s);
    }

    /// Logs in and chooses the first study file. @return the study window, when it answers to keys
    static HWND OpenFirstFile(const RunningProgram &program)
    {
        const HWND files = LogIn(program);
        Press(files, VK_HOME);
        Press(files, VK_RETURN);
        EXPECT_TRUE(program.WaitUntilGone(u"ファイル選択"_s));
        const HWND study = program.Window(u"\\[hanako\\]$"_s);
        EXPECT_TRUE(HaveKeysArrived(program, study));
        return study;
    }

    /// F2 does nothing but show a message; when that is there, the keys before it have arrived.
    static bool HaveKeysArrived(const RunningProgram &program, HWND study)
    {
        const QString title = u"^瞬記帳$"_s;
        const bool isShown = WaitFor([&] {
            if (program.IsShown(title))
                return true;
            Press(study, VK_F2);
            return false;
        });
        return isShown && PressUntilClosed(program.Window(title), VK_RETURN);
    }

    TestFolder temporary;
};

} // namespace

TEST(ProgramFile, Resources_ContainVersionManifestAndIcon)
{
    const std::wstring path = QStringLiteral(APPLICATION_FOLDER "/Kotoban.exe").toStdWString();
    std::vector<char> version(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, DWORD(version.size()), version.data()));
    void *text = nullptr;
    UINT length = 0;
    for (const auto &[name, value] : {std::pair(L"ProductName", ProductName()), {L"FileVersion", VersionText()}}) {
        const std::wstring block = std::wstring(L"\\StringFileInfo\\041104B0\\") + name;
        EXPECT_TRUE(VerQueryValueW(version.data(), block.c_str(), &text, &length));
        EXPECT_EQ(QString::fromWCharArray(static_cast<const wchar_t *>(text)), value);
    }
    const HMODULE program = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_TRUE(program);
    EXPECT_TRUE(FindResourceW(program, MAKEINTRESOURCEW(1), RT_MANIFEST));
    EXPECT_TRUE(FindResourceW(program, MAKEINTRESOURCEW(1), RT_GROUP_ICON));
    FreeLibrary(program);
}

TEST_F(ProgramTest, SettingsFile_AgreesWithSystemProfileFunctions)
{
    const QString folder = MakeFolder(u"瞬記帳の 練習"_s);
    const QByteArray settings = ToCodePage932(QString(folder + u"\\Kotoban.ini"_s));
    EXPECT_TRUE(WritePrivateProfileStringA("setting", "FormLeft", "37", settings.constData()));
    RunningProgram program(folder);
    const HWND window = OpenFirstFile(program);
    // GetWindowRect includes an invisible frame on the left.
    RECT place = {};
    GetWindowRect(window, &place);
    EXPECT_LE(place.left, 37);
    EXPECT_GT(place.left, 20);
    SetWindowPos(window, nullptr, place.left + 15, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_TRUE(WaitFor([&, moved = place.left + 15] { return GetWindowRect(window, &place) && place.left == moved; }));
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(program.ExitCode(), 0);
    char text[100] = {};
    GetPrivateProfileStringA("setting", "FormLeft", "none", text, sizeof text, settings.constData());
    EXPECT_STREQ(text, "52");
}

TEST_F(ProgramTest, SecondInstanceInFolderSpelledDifferently_IsRefused)
{
    const QString folder = MakeFolder(u"Two 画面"_s);
    RunningProgram first(folder);
    first.Window(u"ログイン画面"_s);
    const QByteArray log = temporary.Read(u"Two 画面/Kotoban_log.txt"_s);
    RunningProgram second(QString(folder).replace(u"Two"_s, u"TWO"_s));
    Press(second.Window(u"^Kotoban$"_s), VK_RETURN);
    EXPECT_EQ(second.ExitCode(), 1);
    EXPECT_TRUE(first.IsRunning());
    EXPECT_EQ(temporary.Read(u"Two 画面/Kotoban_log.txt"_s), log);

    RunningProgram elsewhere(MakeFolder(u"other"_s));
    EXPECT_TRUE(PressAltUntil(elsewhere.Window(u"ログイン画面"_s), 'X', [&] { return !elsewhere.IsRunning(); }));
    EXPECT_EQ(elsewhere.ExitCode(), 0);
}

TEST_F(ProgramTest, ReportAndLog_AreWrittenInCodePage932AndReportOpens)
{
    const QString folder = MakeFolder(u"瞬記帳の 練習"_s);
    RunningProgram program(folder);
    const HWND files = LogIn(program);
    const QString question = u"^瞬記帳$"_s;
    EXPECT_TRUE(PressAltUntil(files, 'F', [&] { return program.IsShown(question); }));
    EXPECT_TRUE(PressUntilClosed(program.Window(question), VK_RETURN));
    const QStringList reports = QDir(folder + u"\\rec"_s).entryList(QDir::Files);
    ASSERT_EQ(reports.size(), 1);
    EXPECT_TRUE(reports[0].startsWith(u"hanako_瞬記帳学習記録"_s)) << reports[0].toStdString();
    EXPECT_EQ(temporary.Read(u"瞬記帳の 練習/rec/"_s + reports[0]),
              "\x91\x8D\x8Aw\x8FK\x8E\x9E\x8A\xD4\x81\x81\x30\x95\xAA 0\x95\x62  "
              "\x91\x8D\x89\xF1\x93\x9A\x90\x94\x81\x81\x30\r\n");
    HWND editor = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (editor = FindShown(0, QRegularExpression::escape(reports[0]))) != nullptr; }));
    PostMessageW(editor, WM_CLOSE, 0, 0);
    EXPECT_TRUE(PressAltUntil(files, 'X', [&] { return !program.IsRunning(); }));
    EXPECT_EQ(program.ExitCode(), 0);
    const QByteArray log = temporary.Read(u"瞬記帳の 練習/Kotoban_log.txt"_s);
    EXPECT_TRUE(log.startsWith("Kotoban.exe\x81\x40Ver")) << log.toPercentEncoding().toStdString();
    EXPECT_EQ(log.count("\r\n"), 2);
}

TEST_F(ProgramTest, WindowsSessionEnds_StudySessionIsCompleted)
{
    RunningProgram program(MakeFolder(u"logout"_s));
    const HWND window = OpenFirstFile(program);
    for (int answers = 0; answers < 2; ++answers) {
        Press(window, VK_RETURN);
        EXPECT_TRUE(HaveKeysArrived(program, window));
    }
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, WM_QUERYENDSESSION, 0, LPARAM(ENDSESSION_LOGOFF), SMTO_NORMAL, 5000, &answer);
    EXPECT_EQ(answer, DWORD_PTR(TRUE));
    SendMessageTimeoutW(window, WM_ENDSESSION, TRUE, LPARAM(ENDSESSION_LOGOFF), SMTO_NORMAL, 5000, &answer);
    // From here on Windows may end the process at any moment.
    EXPECT_EQ(
        Query(temporary.Path(u"logout/db/kotoban.splite3"_s), "select num_answer, dt_end is not null from t_kotoban"),
        u"2|1"_s);
}

TEST_F(ProgramTest, MissingFolder_IsLoggedWithNativeSeparators)
{
    // Characters outside code page 932 do not matter.
    const QString folder = MakeFolder(u"é 表示"_s);
    QDir(folder + u"\\rec"_s).removeRecursively();
    RunningProgram program(folder);
    EXPECT_EQ(program.ExitCode(), 1);
    EXPECT_TRUE(FromCodePage932(temporary.Read(u"é 表示/Kotoban_log.txt"_s)).endsWith(u"\\? 表示\\rec\r\n"_s));
}

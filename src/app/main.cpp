// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Sub Main: creates every object once, runs the start-up steps, then shows the user selection and the study window.
#include "app/frmLogin.h"
#include "app/modMain.h"
#include "base/modFile.h"
#include "platform/QtSystemServices.h"
#include "platform/modEndSignal.h"
#include "platform/modFonts.h"
#include "platform/modInputMethod.h"
#include "records/modPlaceList.h"
#include "view/frmText.h"
#include "widgets/CursorRest.h"
#include "widgets/DialogFocus.h"
#include "widgets/HelpKey.h"
#include "widgets/InputGuard.h"
#include "widgets/OutlinedStyle.h"
#include "widgets/PageFont.h"
#include "widgets/ScaleRepaint.h"
#include "widgets/WindowFont.h"
#include "widgets/frmMsg.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QResource>
#include <QScreen>
#include <QTranslator>

#include <cstdio>
#include <memory>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Ignores a QT_SCALE_FACTOR with which nothing would be legible; Qt would accept any.
void IgnoreOddScaling()
{
    constexpr double smallest = 0.25;
    constexpr double largest = 8;
    const double factor = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble(); // 0 if not a number
    if (!(factor >= smallest && factor <= largest))
        qunsetenv("QT_SCALE_FACTOR");
}

/// The icon, from its pixels: reading a picture file would load the plugins for all formats. Their bytes are in the
/// order of a little-endian machine.
QIcon WindowIcon()
{
    constexpr int side = 64;
    const uchar *const bytes = QResource(u":/kotoban.bgra"_s).data(); // part of the program, so it stays
    return QPixmap::fromImage(QImage(bytes, side, side, QImage::Format_ARGB32_Premultiplied));
}

/// Whether Qt can paint on the screen: on X11 it needs at least 15 bits per pixel and aborts the program otherwise.
bool CanPaint()
{
    return QGuiApplication::platformName() != u"xcb" || QGuiApplication::primaryScreen()->depth() >= 15;
}

/// The name of the user, which may be empty; none if the program must end.
std::optional<QString> AskForUser(SystemServices &services, frmMsg &msg, const QString &folder)
{
    frmLogin login(services, msg, JoinPath(folder, u"ListUserName.txt"_s),
                   PlaceList(JoinPath(folder, u"ListPlace.txt"_s)).LastUser());
    return login.Ask() == LoginResult::EndProgram ? std::nullopt : std::optional(login.UserName());
}

} // namespace

int main(int argc, char *argv[])
{
    IgnoreOddScaling();
#ifdef QT_STATIC
    // All plugins are linked in; those of an installed Qt belong to another version.
    QCoreApplication::setLibraryPaths({});
#endif
    auto inputMethod = std::make_unique<InputMethodScope>();
    QApplication application(argc, argv);
    inputMethod.reset();
    if (!CanPaint()) {
        std::fputs("瞬記帳: 画面の色数が足りません。15 ビット以上の画面で起動してください。\n", stderr);
        return 1;
    }
    QGuiApplication::setDesktopFileName(u"org.kotoban.kotoban"_s); // some desktops find the icon by it
    OutlinedStyle::Install();
    application.setFont(WindowFont(QApplication::font()));
    InputGuard inputGuard;
    const DialogFocus dialogFocus;
    const CursorRest cursorRest;

    const QString folder = QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
    const QString baseName = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    QtSystemServices services;
    std::optional<ScaleRepaint> scaleRepaint;
    if (!services.HasWindowPlaces())
        scaleRepaint.emplace();
    const HelpKey helpKey(services, folder);
    QTranslator qtTexts;
    if (qtTexts.load(u":/qt_ja.qm"_s))
        QApplication::installTranslator(&qtTexts);
    QApplication::setWindowIcon(WindowIcon());
    const InstanceMark instance(folder);
    const RunLog log(folder, baseName, services.Clock());
    StudyDatabase database(services);
    if (!PrepareRun(folder, instance, log, services, database))
        return 1;

    EndSignal endSignal;
    QObject::connect(&endSignal, &EndSignal::Asked, &application, [] { QApplication::exit(0); });
    frmMsg msg(services, JoinPath(folder, u"wav"_s));
    const std::optional<QString> userName = AskForUser(services, msg, folder);
    if (!userName || endSignal.WasAsked())
        return 0;
    CompleteDatabase(folder, services, database);
    // Only now: the font is looked up for the study window, and no other window is open.
    if (!HasPageFont())
        services.ShowMessage(u"日本語の等幅フォントが見つかりません。\r\n"_s + FontAdvice());
    if (endSignal.WasAsked()) // while one of these messages was open
        return 0;
    frmText study(services, database, log, msg, inputGuard,
                  {folder, JoinPath(folder, baseName + u".ini"_s), *userName});
    QObject::connect(&study, &frmText::Ended, &application, [] { QApplication::exit(0); });
    QObject::connect(&endSignal, &EndSignal::Asked, &study, &frmText::close);
    endSignal.SetExitHook([&services, &study] {
        services.GoSilent();
        study.Record();
    });
    study.show();
    return QApplication::exec();
}

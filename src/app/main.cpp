// Sub Main: makes each object once, prepares the run, then hands over from the user selection to the study window.
#include "app/frmLogin.h"
#include "app/modMain.h"
#include "platform/frmCompositionGuard.h"
#include "platform/frmQtDesktop.h"
#include "platform/modEndSignal.h"
#include "platform/modFile.h"
#include "settings/frmMsg.h"
#include "view/frmText.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QIcon>
#include <QPixmap>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The system's font, with Japanese ones behind it, so that kanji have their Japanese shapes in every locale.
QFont UserInterfaceFont()
{
    QFont font = QApplication::font();
    QStringList families = font.families();
    families += {u"Yu Gothic UI"_s, u"Meiryo"_s, u"Noto Sans CJK JP"_s, u"IPAPGothic"_s, u"IPAGothic"_s};
    font.setFamilies(families);
    return font;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(u"org.kotoban.kotoban"_s); // by which some desktops find the icon
    application.setFont(UserInterfaceFont());
    // Once the first window is there, and with its format named, or the toolkit would load all formats it knows.
    QTimer::singleShot(0, &application, [] { QApplication::setWindowIcon(QPixmap(u":/kotoban.png"_s, "PNG")); });

    const CompositionGuard compositionGuard;

    const QString folder = QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
    const QString baseName = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    frmQtDesktop desktop;
    const InstanceMark instance(folder);
    const RunLog log(folder, baseName, desktop);
    StudyDatabase database(desktop);
    if (!PrepareRun(folder, instance, log, desktop, database))
        return 1;

    const EndSignal endSignal;
    QObject::connect(&endSignal, &EndSignal::Asked, &application, [] { QApplication::exit(0); });
    frmMsg msg(desktop, JoinPath(folder, u"wav"_s));
    QString userName;
    {
        frmLogin login(desktop, msg, JoinPath(folder, u"ListUserName.txt"_s));
        if (login.Ask() == LoginResult::EndProgram || endSignal.WasAsked())
            return 0;
        userName = login.UserName();
    }
    frmText study(desktop, database, log, msg, {folder, JoinPath(folder, baseName + u".ini"_s), userName});
    QObject::connect(&study, &frmText::Ended, &application, [] { QApplication::exit(0); });
    QObject::connect(&endSignal, &EndSignal::Asked, &study, &frmText::close);
    study.show();
    return QApplication::exec();
}

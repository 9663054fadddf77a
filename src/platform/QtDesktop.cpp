#include "platform/QtDesktop.h"

#include "platform/modProcess.h"
#include "platform/modShell.h"

#include <QApplication>
#include <QMessageBox>

void QtDesktop::GoSilent()
{
    m_isSilent = true;
}

void QtDesktop::SetApplicationTitle(const QString &title)
{
    m_title = title;
}

void QtDesktop::ShowMessage(const QString &text)
{
    ShowMessage(text, m_title.isEmpty() ? QApplication::applicationName() : m_title);
}

void QtDesktop::ShowMessage(const QString &text, const QString &title)
{
    if (m_isSilent)
        return;
    QMessageBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText); // the text of a study file is no markup
    box.setObjectName(QStringLiteral("msgBox"));
    box.exec();
}

void QtDesktop::PlaySoundFile(const QString &path)
{
    m_sound.Play(path);
}

void QtDesktop::Speak(const QString &text)
{
    m_voice.Speak(text);
}

bool QtDesktop::OpenWithShell(const QString &path, const QString &workingFolder)
{
    return ShellOpen(path, workingFolder);
}

bool QtDesktop::StartCommandLine(const QString &commandLine)
{
    return StartProcess(commandLine);
}

QDateTime QtDesktop::Now() const
{
    return QDateTime::currentDateTime();
}

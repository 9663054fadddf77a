// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/QtSystemServices.h"

#include "platform/modProcess.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>

#include <utility>

using namespace Qt::Literals::StringLiterals;

void QtSystemServices::GoSilent()
{
    m_isSilent = true;
}

void QtSystemServices::SetApplicationTitle(const QString &title)
{
    m_title = title;
}

void QtSystemServices::ShowMessage(const QString &text)
{
    ShowMessage(text, m_title.isEmpty() ? QApplication::applicationName() : m_title);
}

void QtSystemServices::ShowMessage(const QString &text, const QString &title)
{
    if (m_isSilent)
        return;
    QMessageBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText); // text quoted from a study file must not be taken for markup
    box.setObjectName(QStringLiteral("msgBox"));
    box.exec();
}

void QtSystemServices::PlaySoundFile(const QString &path)
{
    m_sound.Play(path);
}

bool QtSystemServices::HasVoice()
{
    return m_voice.IsThere();
}

void QtSystemServices::Speak(const QString &text)
{
    m_voice.Speak(text);
}

bool QtSystemServices::OpenWithShell(const QString &path, const QString &workingFolder)
{
    return ShellOpen(path, workingFolder, [this, path](const QString &advice) {
        TellFailure(QDir::toNativeSeparators(path) + u"\r\nを開けません。\r\n"_s + advice);
    });
}

bool QtSystemServices::StartCommandLine(const QString &commandLine)
{
    return StartProcess(commandLine, [this](const QString &advice) {
        TellFailure(u"テキストエディタを起動できません。\r\n"_s + advice);
    });
}

void QtSystemServices::SetFailureTeller(const std::function<void(const QString &message)> &tell)
{
    m_tellFailure = tell;
    for (const QString &message : std::exchange(m_failures, {}))
        TellFailure(message);
}

void QtSystemServices::TellFailure(const QString &message)
{
    if (m_tellFailure)
        m_tellFailure(message);
    else
        m_failures += message;
}

bool QtSystemServices::HasWindowPlaces() const
{
    return !QGuiApplication::platformName().startsWith(u"wayland"); // also "wayland-egl"
}

QDateTime QtSystemServices::Now() const
{
    return QDateTime::currentDateTime();
}

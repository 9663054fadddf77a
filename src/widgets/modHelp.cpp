// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/modHelp.h"

#include "base/modFile.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::Literals::StringLiterals;

QString HelpPageOf(QStringView objectName)
{
    static constexpr std::pair<QStringView, QStringView> pages[] = {
        {u"frmLogin", u"index.htm"},       {u"frmText", u"index.htm"},     {u"frmFile", u"files.htm"},
        {u"historyPanel", u"history.htm"}, {u"frmPrint", u"teachers.htm"}, {u"frmTable", u"teachers.htm"},
        {u"frmExport", u"teachers.htm"},   {u"frmMend", u"files.htm"},     {u"frmIni", u"settings.htm"},
        {u"frmSearch", u"settings.htm"},   {u"frmPicture", u"study.htm"},  {u"frmWrite", u"write.htm"},
    };
    for (const auto &[name, page] : pages)
        if (name == objectName)
            return page.toString();
    return QString();
}

void ShowHelp(SystemServices &services, const QString &applicationFolder, const QString &page)
{
    const QString help = JoinPath(JoinPath(applicationFolder, u"htm"_s), page);
    if (!QFileInfo::exists(help))
        services.ShowMessage(help + u"が見つかりません。"_s);
    else if (!services.OpenWithShell(help, applicationFolder))
        services.ShowMessage(help + u"\r\nを開けません。"_s);
}

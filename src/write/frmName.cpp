// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/frmName.h"

#include "base/modFile.h"
#include "base/modLog.h"
#include "exchange/modStudyFromTable.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

frmName::frmName(frmMsg &msg, const QString &studyFolder, QWidget *owner)
    : CommandWindow(u"frmName"_s, msg, owner), m_studyFolder(studyFolder), txtName(new QLineEdit(this))
{
    Form_Load();
}

void frmName::Form_Load()
{
    WriteTrace(u"■frmName.Form_Load");
    setWindowTitle(u"学習ファイルの名前"_s);
    NameControl(txtName, u"txtName"_s, u"学習ファイルの名前"_s, u"この名前で txt フォルダに保存します (Alt+N)"_s);
    txtName->setMinimumWidth(Ems(fontMetrics(), 20));
    Column()->addWidget(LabelOf(txtName, u"lblName"_s, u"ファイル名(&N)："_s));
    Column()->addWidget(txtName);
    AddAnswers(u"保存"_s, u"この名前で保存します (Enter)"_s, u"保存せずに戻ります (Esc)"_s);
}

QString frmName::Ask(const QString &title)
{
    m_name.clear();
    txtName->setText(title);
    txtName->selectAll();
    txtName->setFocus();
    exec();
    return m_name;
}

void frmName::cmdOK_Click()
{
    WriteTrace(u"■frmName.cmdOK_Click");
    const QString title = StudyFileTitle(txtName->text());
    txtName->setText(title); // as the file will be named, so that the user can find it
    txtName->setFocus();
    if (const QString refusal = TitleRefusal(title); !refusal.isEmpty()) {
        Refuse(refusal);
        return;
    }
    const QString name = title + u".txt"_s;
    if (const QFileInfo file(JoinPath(m_studyFolder, name)); file.exists() || file.isSymLink()) {
        Refuse(u"同じ名前の学習ファイルがあります。別の名前にしてください。\r\n    "_s + name);
        return;
    }
    m_name = name;
    accept();
}

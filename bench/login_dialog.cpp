// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A plain Qt dialog with the controls and texts of the user selection: what the first window takes without any code of
// ours.
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QDialog dialog;
    dialog.setWindowTitle(u"瞬記帳 ログイン画面"_s);
    auto *const buttons = new QDialogButtonBox(Qt::Vertical);
    buttons->addButton(new QPushButton(u"OK"_s), QDialogButtonBox::AcceptRole);
    buttons->addButton(new QPushButton(u"終了(&X)"_s), QDialogButtonBox::RejectRole);
    auto *const form = new QFormLayout;
    form->addRow(u"利用者名(&U)："_s, new QLineEdit);
    form->addRow(u"利用者一覧(&L)："_s, new QListWidget);
    auto *const grid = new QGridLayout(&dialog);
    grid->addWidget(
        new QLabel(u"利用者一覧に自分の名前があればそれを選択。\nなければ，自分の名前を入力してください。"_s), 0, 0, 1,
        2);
    grid->addLayout(form, 1, 0);
    grid->addWidget(buttons, 1, 1);
    dialog.show();
    return QApplication::exec();
}

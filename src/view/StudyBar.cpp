// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/StudyBar.h"

#include "base/modFile.h"
#include "widgets/BarButton.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/PageColours.h"

#include <QAction>
#include <QActionGroup>
#include <QFileInfo>
#include <QMenu>

using namespace Qt::Literals::StringLiterals;

StudyBar::StudyBar(QWidget *window)
    : CommandBar(u"lblFile"_s, window),
      cmdFile(NewCommand<BarButton>(u"cmdFile"_s, Icon::Open, u"ファイル選択"_s, u"Alt+O"_s,
                                    u"別の学習ファイルを選びます (Alt+O)"_s)),
      cmdReRead(NewCommand<BarButton>(u"cmdReRead"_s, Icon::Reload, u"再読込"_s, u"Alt+R"_s,
                                      u"編集した学習ファイルを読み直します (Alt+R)"_s)),
      cmdEdit(NewCommand<BarButton>(u"cmdEdit"_s, Icon::Edit, u"編集"_s, u"Alt+E"_s,
                                    u"学習ファイルをテキストエディタで開きます (Alt+E)"_s)),
      cmdSearch(NewCommand<BarButton>(u"cmdSearch"_s, Icon::Search, u"検索"_s, u"Alt+F"_s,
                                      u"キーワードや本文の言葉を探します (Ctrl+F)"_s)),
      chkOnlyHard(NewCommand<BarCheckBox>(u"chkOnlyHard"_s, Icon::Filter, u"苦手だけ"_s, u"Alt+N"_s,
                                          u"苦手の印のある空欄だけを隠して学習します (Ctrl+Shift+M)"_s)),
      cmdHard(
          NewCommand<BarButton>(u"cmdHard"_s, Icon::Hard, u"苦手"_s, u"Alt+M"_s,
                                u"選んだ空欄か最後に表示した正解に苦手の印を付けます。もう一度で外します (Ctrl+M)"_s)),
      chkSpeak(NewCommand<BarCheckBox>(u"chkSpeak"_s, Icon::Speak, u"読み上げ"_s, u"Alt+S"_s,
                                       u"押すたびに，クリックした言葉だけを読み上げる，表示した正解もすべて読み上げる，"
                                       u"読み上げない，と変わります (Alt+S)"_s)),
      cmdIni(NewCommand<BarButton>(u"cmdIni"_s, Icon::Settings, u"設定"_s, u"Alt+I"_s,
                                   u"文字の大きさなどを変えます (Alt+I)"_s)),
      cmdDispHowToUse(NewCommand<BarButton>(u"cmdDispHowToUse"_s, Icon::Help, u"使い方"_s, u"Alt+H"_s,
                                            u"使い方の説明を開きます (F1)"_s)),
      actPageOnly(NewEntry(u"actPageOnly"_s, u"ページだけ"_s)), actWrite(NewEntry(u"actWrite"_s, u"書く"_s)),
      actPrint(NewEntry(u"actPrint"_s, u"印刷…"_s)), actExport(NewEntry(u"actExport"_s, u"書き出す…"_s)),
      actLarger(NewEntry(u"actLarger"_s, u"大きく"_s)), actSmaller(NewEntry(u"actSmaller"_s, u"小さく"_s)),
      actUsualSize(NewEntry(u"actUsualSize"_s, u"100 %"_s)),
      cmdSpeak(new BarButton(u"cmdSpeak"_s, Icon::Down, QString(), this))
{
    chkSpeak->setTristate(true);
    AddSpeechMenu();
    AddCommands();
    for (QAction *const entry : {actPageOnly, actWrite, static_cast<QAction *>(nullptr), actPrint, actExport,
                                 static_cast<QAction *>(nullptr), actLarger, actSmaller, actUsualSize})
        AddToMenu(entry);
}

void StudyBar::AddCommands()
{
    StartGroup();
    Add(cmdFile);
    StartGroup();
    Add(cmdReRead);
    Add(cmdEdit);
    StartGroup();
    Add(cmdSearch);
    StartGroup();
    chkOnlyHard->SetCount(0);
    Add(chkOnlyHard);
    Add(cmdHard);
    StartGroup();
    Add(chkSpeak, cmdSpeak);
    StartGroup();
    Add(cmdIni);
    Add(cmdDispHowToUse);
    SetLeavingOrder({cmdDispHowToUse, cmdIni, cmdReRead, cmdEdit, chkSpeak, cmdSearch, cmdHard, chkOnlyHard});
}

/// The check box goes through its states one after the other; the menu names them.
void StudyBar::AddSpeechMenu()
{
    auto *const menu = new QMenu(cmdSpeak);
    auto *const states = new QActionGroup(menu); // in the order of Qt::CheckState
    for (const QString &text : {u"読み上げない"_s, u"クリックした言葉"_s, u"表示した正解も"_s}) {
        QAction *const state = menu->addAction(text);
        state->setCheckable(true);
        states->addAction(state);
    }
    connect(menu, &QMenu::aboutToShow, this,
            [this, states] { states->actions().at(chkSpeak->checkState())->setChecked(true); });
    connect(states, &QActionGroup::triggered, this, [this, states](QAction *chosen) {
        chkSpeak->setCheckState(Qt::CheckState(states->actions().indexOf(chosen)));
        Q_EMIT chkSpeak->clicked(chkSpeak->isChecked());
    });
    cmdSpeak->setMenu(menu);
    cmdSpeak->setAccessibleName(u"何を読み上げるか"_s);
    cmdSpeak->setToolTip(u"何を読み上げるかを選びます"_s);
}

void StudyBar::ShowFile(const QString &name)
{
    Title()->setText(NameInLine(QFileInfo(name).completeBaseName()));
    SetPlainToolTip(Title(), NameInLine(name));
}

void StudyBar::EnableFileControls(bool isEnabled)
{
    for (QWidget *const control :
         std::initializer_list<QWidget *>{cmdReRead, cmdEdit, cmdSearch, chkSpeak, cmdSpeak, cmdIni})
        control->setEnabled(isEnabled);
    for (QAction *const action : {actWrite, actPrint, actExport})
        action->setEnabled(isEnabled);
}

void StudyBar::ShowHard(int count, bool isOnlyHard, bool canMark)
{
    chkOnlyHard->SetCount(count);
    chkOnlyHard->setEnabled(count > 0);
    chkOnlyHard->setChecked(isOnlyHard);
    cmdHard->setEnabled(canMark);
}

void StudyBar::SetHardColours(const PageColours *colours)
{
    cmdHard->SetHardColour(colours ? colours->hard : QColor());
    chkOnlyHard->SetTickedColours(colours ? colours->hardTint : QColor(), colours ? colours->hardText : QColor());
}

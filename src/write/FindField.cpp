// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/FindField.h"

#include "widgets/BarButton.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"

#include <QHBoxLayout>
#include <QHideEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

FindField::FindField(QWidget *parent)
    : QWidget(parent), txtFind(new QLineEdit(this)), lblNotFound(NamedLabel(u"lblNotFound"_s, u"ありません"_s, this))
{
    NameControl(txtFind, u"txtFind"_s, u"探す言葉"_s, u"Enter で次，Shift+Enter で前の所に移ります (Ctrl+F)"_s);
    txtFind->setPlaceholderText(u"探す言葉"_s);
    txtFind->setMaxLength(200);
    txtFind->setMinimumWidth(Ems(fontMetrics(), 6));
    txtFind->installEventFilter(this);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(txtFind, 1);
    row->addWidget(lblNotFound);
    KeepSizeWhenHidden(lblNotFound);
    lblNotFound->hide();
    connect(txtFind, &QLineEdit::textChanged, lblNotFound, &QWidget::hide);
    const auto add = [this, row](const QString &name, const QString &text, const QString &toolTip, auto clicked) {
        QPushButton *const button = NamedButton(name, text, toolTip, this);
        connect(button, &QPushButton::clicked, this, clicked);
        row->addWidget(button);
    };
    add(u"cmdFindPrevious"_s, u"前"_s, u"前の所に移ります (Shift+F3)"_s, [this] { Q_EMIT Asked(true); });
    add(u"cmdFindNext"_s, u"次"_s, u"次の所に移ります (F3)"_s, [this] { Q_EMIT Asked(false); });
    add(u"cmdFindEnd"_s, u"終わる"_s, u"検索を終わります (Esc)"_s, [this] { Close(); });
}

void FindField::Open(const QString &text)
{
    if (!text.isEmpty())
        txtFind->setText(text);
    show();
    txtFind->selectAll();
    txtFind->setFocus();
}

QString FindField::Wanted() const
{
    return txtFind->text();
}

void FindField::TellNotFound()
{
    lblNotFound->show();
}

void FindField::Close()
{
    hide();
    Q_EMIT Closed();
}

bool FindField::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(object, event);
    const auto *const press = static_cast<QKeyEvent *>(event);
    if (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter)
        Q_EMIT Asked(press->modifiers().testFlag(Qt::ShiftModifier));
    else if (press->key() == Qt::Key_Escape)
        Close();
    else
        return false;
    return true;
}

void FindField::showEvent(QShowEvent *)
{
    Q_EMIT Shown(true);
}

void FindField::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        Q_EMIT Shown(!isHidden());
}

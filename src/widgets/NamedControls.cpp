// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/NamedControls.h"

#include "widgets/Contrast.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QTextDocument>

QLabel *NamedLabel(const QString &name, const QString &text, QWidget *parent)
{
    auto *const label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void NameControl(QWidget *control, const QString &name, const QString &accessibleName, const QString &toolTip)
{
    control->setObjectName(name);
    control->setAccessibleName(accessibleName);
    control->setToolTip(toolTip);
}

QLabel *LabelOf(QWidget *control, const QString &name, const QString &caption)
{
    QLabel *const label = NamedLabel(name, caption, control->parentWidget());
    label->setBuddy(control);
    return label;
}

QString PlainToolTip(const QString &text)
{
    return text.isEmpty() ? text : Qt::convertFromPlainText(text);
}

void SetPlainToolTip(QWidget *control, const QString &text)
{
    control->setToolTip(PlainToolTip(text));
    control->setAccessibleDescription(text);
}

QPushButton *NamedButton(const QString &name, const QString &caption, const QString &toolTip, QWidget *parent)
{
    auto *const button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

void DimPlaceholder(QWidget *control)
{
    const QPalette desktop = QGuiApplication::palette();
    QPalette dimmed;
    dimmed.setColor(QPalette::PlaceholderText, Dimmed(desktop.color(QPalette::Text), desktop.color(QPalette::Base)));
    control->setPalette(dimmed);
}

void KeepSizeWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

void SetTabOrder(std::initializer_list<QWidget *> controls)
{
    QWidget *last = nullptr;
    for (QWidget *const next : controls) {
        if (last)
            QWidget::setTabOrder(last, next);
        last = next;
    }
}

QHBoxLayout *AnswerRow(QPushButton *cmdOK, QPushButton *cmdCancel, QWidget *beside)
{
    auto *const buttons = new QDialogButtonBox;
    buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
    // As a place of its own in the order of the Tab key that leads back to its first button, the box could hold the
    // user between its buttons.
    buttons->setFocusProxy(nullptr);
    cmdOK->setDefault(true);
    auto *const row = new QHBoxLayout;
    if (beside)
        row->addWidget(beside, 1);
    row->addWidget(buttons);
    return row;
}

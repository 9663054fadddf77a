// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/LineField.h"

#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

LineField::LineField(QWidget *parent) : QWidget(parent), txtLine(new QLineEdit(this))
{
    txtLine->setObjectName(u"txtLine"_s);
    txtLine->setAccessibleName(u"移る行の番号"_s);
    txtLine->setToolTip(u"行の番号を入れて Enter を押すと，その行に移ります (Ctrl+G)"_s);
    txtLine->setValidator(new QIntValidator(1, 99'999'999, txtLine));
    txtLine->installEventFilter(this);
    FitToText(txtLine, u"00000000"_s);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(NamedLabel(u"lblLine"_s, u"行："_s, this));
    row->addWidget(txtLine);
    row->addStretch();
}

void LineField::Open(int line, int lineCount)
{
    m_lineCount = lineCount;
    txtLine->setText(QString::number(line));
    txtLine->selectAll();
    txtLine->setFocus();
}

void LineField::Choose()
{
    const int line = txtLine->text().toInt();
    Q_EMIT Closed();
    if (line > 0)
        Q_EMIT LineChosen(qMin(line, m_lineCount));
}

/// Keeps the field and the ring around it inside a low row.
void LineField::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    txtLine->setMaximumHeight(qMax(fontMetrics().height(), height() - 2 * FocusRingReach));
}

bool LineField::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // Another window or a menu takes the focus only temporarily.
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            Q_EMIT Left();
    }
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(object, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (isEnter)
        Choose();
    else if (key == Qt::Key_Escape)
        Q_EMIT Closed();
    else
        return false;
    return true;
}

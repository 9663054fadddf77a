#include "widgets/NamedControls.h"

#include <QLabel>
#include <QPushButton>

QLabel *NamedLabel(const QString &name, const QString &text, QWidget *parent)
{
    auto *const label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

QPushButton *NamedButton(const QString &name, const QString &caption, const QString &toolTip, QWidget *parent)
{
    auto *const button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// An empty Qt Widgets window, or one with a text as its only content: the baseline for the start of the program.
//
//     empty_window [TEXT]
#include <QApplication>
#include <QLabel>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(400, 300);
    if (argc > 1)
        new QLabel(QString::fromLocal8Bit(argv[1]), &window);
    window.show();
    return QApplication::exec();
}

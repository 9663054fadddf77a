// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Benchmarks of the writing window with the largest file that it opens. Each has the same step in a plain editor of Qt
// beside it, argument 0; argument 1 is the writing window.
#include "Inputs.h"
#include "settings/modSettings.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"
#include "widgets/PageFont.h"
#include "widgets/frmMsg.h"
#include "write/WritePage.h"
#include "write/frmWrite.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTextBlock>
#include <QTimer>

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A study file of just under MaxWriteBytes.
QByteArray LargestFile()
{
    const QByteArray lines = BytesOf(StudyFilePath(1'000));
    QByteArray bytes = lines.repeated(int(MaxWriteBytes / lines.size()));
    return bytes;
}

/// Types letters in the middle of a text, at the beginning of an existing line. key_ms is the mean time of a key with
/// its repaint, longest_ms the longest time between two turns of the event loop until all is quiet.
void TypeIn(QPlainTextEdit *text, benchmark::State &state)
{
    QTextCursor cursor(text->document()->findBlockByNumber(text->blockCount() / 2));
    text->setTextCursor(cursor);
    const auto turn = [] { return TimeOf([] { QCoreApplication::processEvents(); }); };
    for (int quiet = 0; quiet < 3;)
        quiet = turn() < 0.05 ? quiet + 1 : 0; // the first checks of all lines are over
    double keys = 0;
    double longest = 0;
    qint64 typed = 0;
    for (auto step : state) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s);
        const double keyMs = TimeOf([&] {
            QCoreApplication::sendEvent(text, &key);
            text->viewport()->repaint();
        });
        keys += keyMs;
        longest = qMax(longest, keyMs);
        for (int quiet = 0; quiet < 3;) {
            const double elapsed = turn();
            quiet = elapsed < 0.05 ? quiet + 1 : 0;
            longest = qMax(longest, elapsed);
        }
        ++typed;
    }
    state.counters["key_ms"] = keys / double(typed);
    state.counters["longest_ms"] = longest;
}

void TypeWhileWriting(benchmark::State &state)
{
    TestFolder folder;
    const QString path = folder.Write(u"txt/large.txt"_s, LargestFile());
    if (state.range(0) == 0) {
        QPlainTextEdit plain;
        QFont font = PageFont();
        font.setPixelSize(13);
        plain.setFont(font);
        plain.resize(800, 600);
        plain.setPlainText(FromCodePage932(BytesOf(path)));
        plain.show();
        TypeIn(&plain, state);
        return;
    }
    RecordingServices services;
    frmMsg msg(services, u"wav"_s);
    frmWrite window(services, msg, DefaultSettings(), folder.Path(), nullptr);
    window.resize(800, 600);
    QTimer::singleShot(0, &window, [&] {
        TypeIn(window.findChild<WritePage *>(u"txtText"_s), state);
        window.done(0);
    });
    std::ignore = window.Edit(path);
}
BENCHMARK(TypeWhileWriting)->Arg(0)->Arg(1)->Iterations(50)->Unit(benchmark::kMillisecond);

/// Opens the file. longest_ms is that of the turns of the event loop in which its lines are checked for the first time.
void OpenToBeWritten(benchmark::State &state)
{
    TestFolder folder;
    const QString path = folder.Write(u"txt/large.txt"_s, LargestFile());
    RecordingServices services;
    frmMsg msg(services, u"wav"_s);
    double longest = 0;
    for (auto step : state) {
        frmWrite window(services, msg, DefaultSettings(), folder.Path(), nullptr);
        QTimer::singleShot(0, &window, [&] {
            QCoreApplication::processEvents(); // shows the window
            for (int quiet = 0; quiet < 3;) {
                const double elapsed = TimeOf([] { QCoreApplication::processEvents(); });
                quiet = elapsed < 0.05 ? quiet + 1 : 0;
                longest = qMax(longest, elapsed);
            }
            window.done(0);
        });
        std::ignore = window.Edit(path);
    }
    state.counters["longest_ms"] = longest;
}
BENCHMARK(OpenToBeWritten)->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace

// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Drives a fuzz target without a fuzzer: with the files of its corpus, then with random mutations of them, from a fixed
// seed.
//
//     TARGET RUNS CORPUS_FOLDER
#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <unistd.h>
#endif

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

/// Runs one input. Fails if it takes too much time or memory, which is many times what any takes.
void Run(const QByteArray &bytes)
{
#ifdef Q_OS_UNIX
    alarm(10); // seconds; ends the process
#endif
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()), std::size_t(bytes.size()));
#ifdef Q_OS_UNIX
    alarm(0);
    constexpr long mostKilobytes = 1'000'000;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    if (usage.ru_maxrss <= mostKilobytes)
        return;
    std::fprintf(stderr, "too much memory for the input %s\n", bytes.toPercentEncoding().constData());
    std::abort();
#endif
}

/// Bytes that have a special meaning in one of the formats.
constexpr char SpecialBytes[] =
    "[]\r\n\t+-\x1B$B(\"\\ ={};'ab\0\x81\x8E\x93\xFA\xA4\xA1\xA2\xA3\xE3\x82\xEF\xBB\xBF\xFD\xFE\xFF";

QByteArray Mutated(QByteArray bytes, const QByteArray &other, std::mt19937 &random)
{
    const auto pick = [&random](qsizetype count) { return count == 0 ? 0 : qsizetype(random() % quint64(count)); };
    for (qsizetype left = 1 + pick(8); left > 0; --left) {
        const qsizetype at = pick(bytes.size() + 1);
        const char byte = pick(3) == 0 ? char(pick(256)) : SpecialBytes[pick(sizeof SpecialBytes - 1)];
        switch (pick(5)) {
        case 0:
            bytes.insert(at, byte);
            break;
        case 1:
            bytes.remove(at, 1 + pick(4));
            break;
        case 2:
            bytes.insert(at, bytes.mid(pick(bytes.size()), pick(20)));
            break;
        case 3:
            bytes.insert(at, other.mid(pick(other.size()), pick(40)));
            break;
        default:
            if (at < bytes.size())
                bytes[at] = byte;
        }
    }
    return bytes.left(500);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3)
        return 2;
    QList<QByteArray> inputs;
    const QDir corpus(QFile::decodeName(argv[2]));
    for (const QString &name : corpus.entryList(QDir::Files, QDir::Name)) {
        QFile file(corpus.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            return 2;
        inputs += file.readAll();
    }
    if (inputs.isEmpty())
        return 2;
    for (const QByteArray &input : inputs)
        Run(input);
    std::mt19937 random(20240305);
    const int runs = QByteArray(argv[1]).toInt();
    for (int run = 0; run < runs; ++run) {
        qsizetype index = qsizetype(random() % quint64(inputs.size()));
        const QByteArray mutated = Mutated(inputs[index], inputs[qsizetype(random() % quint64(inputs.size()))], random);
        Run(mutated);
        // Mutations accumulate; every 50th becomes a new input instead, truncated to keep the inputs small.
        if (run % 50 != 0)
            inputs[index] = mutated;
        else
            inputs += mutated.left(200);
    }
    std::printf("%d inputs passed\n", runs);
    return 0;
}

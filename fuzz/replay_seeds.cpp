#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{
constexpr qsizetype MostCuts = 100; // of one seed
constexpr int Damages = 150;

void Run(const QByteArray& bytes)
{
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end()); // the sanitizers see a read behind its end
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

void RunDamaged(const QByteArray& seed)
{
    std::mt19937 random(static_cast<unsigned>(seed.size()));
    const auto below = [&random](qsizetype count) {
        return static_cast<qsizetype>(random() % static_cast<unsigned>(count));
    };
    for (int round = 0; round < Damages && !seed.isEmpty(); ++round) {
        QByteArray bytes = seed;
        for (qsizetype left = 1 + below(4); left > 0; --left) {
            const qsizetype at = below(bytes.size());
            switch (below(4)) {
            case 0:
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
                break;
            case 1:
                bytes[at] = static_cast<char>(random());
                break;
            case 2: // a piece once more
                bytes.insert(at, bytes.mid(below(bytes.size()), 1 + below(64)));
                break;
            default:
                bytes.remove(at, 1 + below(qMin<qsizetype>(16, bytes.size() - 1) + 1));
                bytes += ' ';
            }
        }
        Run(bytes);
    }
}
} // namespace

/// Runs a fuzz target, without a fuzzer, over the files of a folder: as they are, cut, and damaged, always alike. A
/// fault ends the program, as it does under the fuzzer.
int main(int count, char** arguments)
{
    int seeds = 0;
    if (count != 2)
        return EXIT_FAILURE;
    const QDir folder(QString::fromLocal8Bit(arguments[1]));
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            return EXIT_FAILURE;
        const QByteArray seed = file.readAll();
        Run(seed);
        for (qsizetype size = 0; size < seed.size(); size += 1 + seed.size() / MostCuts)
            Run(seed.first(size));
        RunDamaged(seed);
        ++seeds;
    }
    std::printf("%d seeds\n", seeds);
    return seeds > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

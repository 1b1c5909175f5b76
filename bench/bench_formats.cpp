// Data files of 16 MiB through TFormat, in pieces as the device commands use them, against objcopy and cp
// on the same data.

#include "formats/data/TFormat.h"
#include "measure.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <random>

namespace {

constexpr qint64 size = 0x1000000;
constexpr qint64 piece = 4096;
constexpr int rounds = 7;

bool makeSource(const QString& name)
{
    std::mt19937 random(1);
    QByteArray bytes(static_cast<int>(size), '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == size;
}

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void check(bool good, const char* what)
{
    if (good)
        return;
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
}

void convert(const char* fromFormat, const QString& from, const char* toFormat, const QString& to)
{
    TFormat source(fromFormat, from, 0, 0, size - 1, piece);
    TFormat target(toFormat, to, 0, 0, size - 1, piece);
    check(source.open(0) && target.open(1), "opening");
    QByteArray data;
    for (qint64 addr = 0;; addr += data.size()) {
        check(source.read(addr, data), "reading");
        if (data.isEmpty())
            break;
        check(target.write(addr, data), "writing");
    }
    check(source.close() && target.close(), "closing");
}

void tool(const QString& program, const QStringList& arguments)
{
    check(QProcess::execute(program, arguments) == 0, qPrintable(program));
}

void print(const char* what, const TPair& seconds, const char* reference, double goal)
{
    std::printf("%-12s %6.1f ms, %s %6.1f ms: %.2f times (at most %.1f)\n", what, seconds.ours * 1e3,
                reference, seconds.reference * 1e3, seconds.ours / seconds.reference, goal);
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const auto path = [&folder](const char* name) { return folder.filePath(QLatin1String(name)); };
    const QString source = path("source.bin");
    const QString hex = path("theirs.hex");
    check(makeSource(source), "making the source");

    const TPair writing = measure(
        rounds, [&] { convert("bin", source, "hex", path("ours.hex")); },
        [&] {
            tool("objcopy", {"-I", "binary", "-O", "ihex", source, hex});
        });
    print("HEX writing", writing, "objcopy", 1.0);

    const TPair reading = measure(
        rounds, [&] { convert("hex", hex, "bin", path("ours.bin")); },
        [&] {
            tool("objcopy", {"-I", "ihex", "-O", "binary", hex, path("theirs.bin")});
        });
    print("HEX reading", reading, "objcopy", 1.0);
    check(contentOf(path("ours.bin")) == contentOf(source), "comparing what was read");
    convert("hex", path("ours.hex"), "bin", path("ours.bin"));
    check(contentOf(path("ours.bin")) == contentOf(source), "comparing what was written");

    const TPair copying = measure(
        rounds, [&] { convert("bin", source, "bin", path("copy.bin")); },
        [&] {
            tool("cp", {source, path("copy2.bin")});
        });
    print("BIN copying", copying, "cp", 3.0);
    check(contentOf(path("copy.bin")) == contentOf(source), "comparing the copy");
    return 0;
}

#ifndef MORVANE_FUZZ_FUZZTARGET_H
#define MORVANE_FUZZ_FUZZTARGET_H

// What every fuzz target shares. A target defines
//
//     void fuzzOne(const QByteArray &input);
//
// and includes this header once, in its source: built with
// -DMORVANE_LIBFUZZER it is a libFuzzer target; otherwise it is a replay
// driver that runs fuzzOne over the files and folders on its command line
// (ctest replays each target's corpus folder with it), over every file whole
// and over a few hundred of its prefixes.

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdio>
#include <cstdlib>

void fuzzOne(const QByteArray &input);

namespace fuzztarget {

// Qt's warnings about damaged input (zlib errors and the like) are expected
// here by the thousand; they are not failures.
inline void quiet(QtMsgType, const QMessageLogContext &, const QString &)
{
}

// Stops the run with the broken invariant: libFuzzer keeps the input.
inline void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "fuzz target: %s\n", what);
        std::abort();
    }
}

} // namespace fuzztarget

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const auto previous = qInstallMessageHandler(fuzztarget::quiet);
    (void)previous;
    fuzzOne(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    return 0;
}

#ifndef MORVANE_LIBFUZZER
namespace fuzztarget {

// The files to replay: a file stands for itself, a folder for the files in
// it (not below it), by name, as libFuzzer takes a corpus folder.
inline bool collect(const QString &path, QStringList &files)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        const QDir dir(path);
        const QStringList names = dir.entryList(QDir::Files, QDir::Name);
        if (names.isEmpty()) {
            std::fprintf(stderr, "no inputs in %s\n", qPrintable(path));
            return false;
        }
        for (const QString &name : names)
            files.append(dir.filePath(name));
        return true;
    }
    files.append(path);
    return true;
}

} // namespace fuzztarget

int main(int argc, char **argv)
{
    qInstallMessageHandler(fuzztarget::quiet);
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        if (!fuzztarget::collect(QString::fromLocal8Bit(argv[i]), files))
            return 1;
    }
    for (const QString &fileName : files) {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot open %s\n", qPrintable(fileName));
            return 1;
        }
        const QByteArray data = file.readAll();
        // The whole file, and every prefix of it at a few hundred cuts.
        const int step = qMax(1, int(data.size() / 300));
        for (int n = 0; n <= data.size(); n += step)
            fuzzOne(data.left(n));
        fuzzOne(data);
    }
    std::printf("replayed %d inputs\n", int(files.size()));
    return 0;
}
#endif

#endif

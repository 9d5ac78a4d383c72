// What comes over the line of a DL/T 645 meter. The first piece of the input tells what was asked for:
// edition, address and data identifier; the last is what comes.

#include "boxsim/acquire/dlt645query.h"
#include "boxsim/acquire/dlt645value.h"
#include "fuzztarget.h"

#include <QRegularExpression>

static QVector<Dlt645Frame> readInPieces(const QByteArray &bytes, int size)
{
    Dlt645FrameFinder finder;
    QVector<Dlt645Frame> frames;
    for (int at = 0; at < bytes.size(); at += size) {
        frames += finder.find(bytes.mid(at, size));
    }
    return frames;
}

static void requireNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^-?(0|[1-9][0-9]*)(\\.[0-9]+)?$"));
    Fuzz::require(text.isNull() || number.match(text).hasMatch(), "a value is a decimal number");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArray input = Fuzz::bytesOf(data, size);
    const int questionSize = 12;
    const QByteArray question = input.left(questionSize).leftJustified(questionSize, '\0');
    const QByteArray bytes = input.mid(questionSize);
    const bool older = question.at(0) & 1;
    const Dlt645Edition edition = older ? Dlt645Edition::Of1997 : Dlt645Edition::Of2007;
    const QString item = QString::fromLatin1(question.mid(1, older ? 2 : 4).toHex());
    const Dlt645Query query = {edition, dlt645Address(QString::fromLatin1(question.mid(5, 6).toHex())),
                               dlt645Item(edition, item)};
    Fuzz::require(query.item.size() == (older ? 2 : 4), "hexadecimal digits are an item");
    dlt645Address(QString::fromUtf8(bytes));
    dlt645Item(edition, QString::fromUtf8(bytes));
    requireNumber(Dlt645Format::of(item, QString::fromUtf8(bytes)).text(bytes.left(4)));

    const QVector<Dlt645Frame> frames = readInPieces(bytes, 1 + static_cast<uchar>(question.at(11)));
    Fuzz::require(frames == readInPieces(bytes, qMax(1, bytes.size())), "cutting does not matter");
    int from = 0;
    for (const Dlt645Frame &frame : frames) {
        const QByteArray whole = dlt645Bytes(frame);
        if (frame.intact) {
            from = bytes.indexOf(whole, from) + whole.size();
            Fuzz::require(from >= whole.size(), "a frame is what came, one behind the other");
        }
        for (const int part : {0, 1, 255}) {
            const Dlt645Answer answer = query.answer(frame, part);
            Fuzz::require(frame.intact || answer.kind == Dlt645Answer::Kind::None,
                          "damaged frames say nothing");
            query.errorText(answer.error);
            for (const char *format : {"XXXXXX.XX", "XXX.X", "XXX", "X.XXX"}) {
                requireNumber(Dlt645Format::of(item, QLatin1String(format)).text(answer.value));
            }
        }
    }
    return 0;
}

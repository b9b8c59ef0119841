// The journal of a session. Input: a line with a number, where the file is cut off; then the file.
// A line "Summe=?" stands for the right checksum of the lines before it, which no fuzzer finds.

#include "fuzz/fuzz.h"
#include "results/sitzungsprobe.h"
#include "results/sitzungstext.h"

using namespace tarvel;

namespace {

constexpr QByteArrayView Kopf = "Sitzung 1\n";
constexpr QByteArrayView Platzhalter = "Summe=?\n";

QByteArray mitPrüfsummen(QByteArrayView text) {
    QByteArray datei;
    while (!text.isEmpty()) {
        const qsizetype ende = text.indexOf(Platzhalter);
        if (ende < 0 || !text.startsWith(Kopf) || ende <= Kopf.size()) {
            return datei.append(text);
        }
        datei += sitzungsblock(text.first(ende).sliced(Kopf.size()).toByteArray());
        text = text.sliced(ende + Platzhalter.size());
    }
    return datei;
}

QByteArray neuGeschrieben(const Sitzungsstand& stand) {
    return sitzungsblock(untersuchungszeilen(stand) + flügelzeilen(stand));
}

QByteArray abbildVon(const Sitzungslesung& lesung) {
    return abbild(*lesung.stand).toUtf8();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    QByteArrayView rest = eingabe(daten, größe);
    const int schnitt = nimmZeile(rest).toByteArray().toInt();
    const QByteArray datei = mitPrüfsummen(rest);

    const Sitzungslesung lesung = sitzungAus(datei);
    verlange(lesung.ende >= 0 && lesung.ende <= datei.size(), "the end lies in the file");
    verlange(lesung.stand.has_value() == (lesung.ende > 0), "a block that counts gives a state");
    if (!lesung.stand) {
        return 0;
    }
    const Sitzungslesung wieder = sitzungAus(neuGeschrieben(*lesung.stand));
    verlange(wieder.stand && !wieder.beschädigt, "what was read can be written and read");
    verlangeGleich(abbildVon(lesung), abbildVon(wieder), "a state comes back whole");

    // What a crash leaves while a block is added at the end.
    const QByteArray ganze = datei.first(lesung.ende);
    const QByteArray block = sitzungsblock(flügelzeilen(*lesung.stand));
    const Sitzungslesung nachher =
        sitzungAus(ganze + block.first(std::abs(qint64{schnitt}) % (block.size() + 1)));
    verlange(nachher.stand.has_value(), "a cut leaves a state");
    verlangeGleich(abbildVon(lesung), abbildVon(nachher), "a cut leaves the former state");
    return 0;
}

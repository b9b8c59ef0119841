#include "collection/koloniespeicher.h"

#include "collection/inhaltsmarke.h"

#include <cmath>
#include <cstring>
#include <numeric>
#include <string>
#include <type_traits>
#include <unordered_map>

namespace tarvel {

namespace {

// Kennung, mark of the rules, state, texts, rows; last a mark of all before it. Numbers stand as
// the machine has them: another machine makes its own file.
constexpr QByteArrayView Kennung = "Tarvel overview 1\n";

class Schreiber {
public:
    template <typename T>
    void zahl(T wert) {
        static_assert(std::is_arithmetic_v<T>);
        bytes.append(reinterpret_cast<const char*>(&wert), sizeof wert);
    }
    void text(const QByteArray& t) {
        zahl(static_cast<quint32>(t.size()));
        bytes.append(t.constData(), static_cast<std::size_t>(t.size()));
    }

    std::string bytes;
};

/// Numbers texts, each once: breeders and matings come again and again.
class Textnummern {
public:
    explicit Textnummern(Schreiber& neue)
        : neue_(neue) {}

    quint32 nummer(const QString& text) {
        // Most texts share their place in memory with those of other rows.
        const auto [ort, neu] = orte_.try_emplace(text.constData(), 0);
        if (neu) {
            const auto [stelle, erster] =
                texte_.try_emplace(text, static_cast<quint32>(texte_.size()));
            if (erster) {
                neue_.text(text.toUtf8());
            }
            ort->second = stelle->second;
        }
        return ort->second;
    }
    [[nodiscard]] std::size_t anzahl() const { return texte_.size(); }

private:
    Schreiber& neue_;
    std::unordered_map<const QChar*, quint32> orte_;
    std::unordered_map<QString, quint32> texte_;
};

/// Reads as long as there is something; @p ok says whether there always was.
class Leser {
public:
    explicit Leser(QByteArrayView bytes)
        : rest_(bytes) {}

    template <typename T>
    T zahl() {
        T wert{};
        if (const char* ort = nimm(sizeof wert)) {
            std::memcpy(&wert, ort, sizeof wert);
        }
        return wert;
    }
    QByteArrayView text() {
        const auto länge = static_cast<qsizetype>(zahl<quint32>());
        const char* ort = nimm(länge);
        return ort != nullptr ? QByteArrayView(ort, länge) : QByteArrayView();
    }
    const char* nimm(qsizetype länge) {
        if (länge > rest_.size()) {
            ok = false;
            rest_ = {};
            return nullptr;
        }
        const char* ort = rest_.data();
        rest_ = rest_.sliced(länge);
        return ort;
    }
    [[nodiscard]] bool amEnde() const { return rest_.isEmpty(); }
    [[nodiscard]] qsizetype rest() const { return rest_.size(); }

    bool ok = true;

private:
    QByteArrayView rest_;
};

constexpr QString Koloniewerte::*Textfelder[] = {
    &Koloniewerte::UNr,       &Koloniewerte::Satznummer, &Koloniewerte::Volk,
    &Koloniewerte::Königin,   &Koloniewerte::Züchter,    &Koloniewerte::Besitzer,
    &Koloniewerte::Begattung, &Koloniewerte::Rasse};

void schreibe(Schreiber& s, const Indexwerte& w) {
    const Kennzahlen& k = w.kennzahlen;
    s.zahl(static_cast<quint8>(k.anzahl));
    if (k.anzahl == 0) {
        return;
    }
    s.zahl(k.mittelwert);
    s.zahl(static_cast<float>(k.minimum)); // they were singles
    s.zahl(static_cast<float>(k.maximum));
    s.zahl(k.standardabweichung.value_or(-1));
    s.zahl(static_cast<quint8>(w.unter));
    s.zahl(static_cast<quint8>(w.über));
    // Class 0, then from the first class with wings to the last.
    std::size_t von = 1;
    std::size_t bis = w.klassen.size();
    while (von < bis && w.klassen.at(von) == 0) {
        ++von;
    }
    while (bis > von && w.klassen.at(bis - 1) == 0) {
        --bis;
    }
    s.zahl(w.klassen[0]);
    s.zahl(static_cast<quint8>(von));
    s.zahl(static_cast<quint8>(bis - von));
    for (std::size_t i = von; i < bis; ++i) {
        s.zahl(w.klassen.at(i));
    }
}

void lies(Leser& l, Indexwerte& w) {
    Kennzahlen& k = w.kennzahlen;
    k.anzahl = l.zahl<quint8>();
    if (k.anzahl == 0) {
        return;
    }
    k.mittelwert = l.zahl<double>();
    k.minimum = l.zahl<float>();
    k.maximum = l.zahl<float>();
    const auto s = l.zahl<double>();
    k.standardabweichung = s < 0 ? std::nullopt : std::optional(s);
    w.unter = l.zahl<quint8>();
    w.über = l.zahl<quint8>();
    w.klassen[0] = l.zahl<quint8>();
    const std::size_t von = l.zahl<quint8>();
    const std::size_t anzahl = l.zahl<quint8>();
    if (von + anzahl > w.klassen.size()) {
        l.ok = false;
    } else if (const char* ort = l.nimm(static_cast<qsizetype>(anzahl))) {
        std::memcpy(w.klassen.data() + von, ort, anzahl);
    }
    // Views sort and draw by these: a number that is none would break their order.
    const bool zahlen = std::isfinite(k.mittelwert) && std::isfinite(k.minimum) &&
                        std::isfinite(k.maximum) && std::isfinite(s);
    const int inKlassen = std::accumulate(w.klassen.begin(), w.klassen.end(), 0);
    l.ok = l.ok && zahlen && w.unter + w.über <= k.anzahl && inKlassen <= k.anzahl;
}

/// Whether an examination can have these: they are shown and counted by as they are.
bool kannStimmen(const Koloniewerte& w) {
    constexpr int LetztesJahr = 9999;
    return w.dpi >= Koloniewerte::Gemischt && w.rasse >= Koloniewerte::OhneRasse &&
           (w.datum.isNull() || (w.datum.year() > 0 && w.datum.year() <= LetztesJahr));
}

quint64 markeVon(QByteArrayView bytes) {
    Inhaltsmarke marke;
    marke.füge(bytes);
    return marke.wert();
}

} // namespace

QByteArray alsDatei(const Koloniespeicher& speicher, quint64 regelmarke) {
    Schreiber texte;
    Textnummern nummern(texte);
    Schreiber sätze;
    constexpr std::size_t JeSatz = 256; // about
    sätze.bytes.reserve(speicher.sätze.size() * JeSatz);
    for (const Koloniesatz& satz : speicher.sätze) {
        const Koloniewerte& w = satz.werte;
        sätze.zahl(satz.marke);
        for (const auto text : Textfelder) {
            sätze.zahl(nummern.nummer(w.*text));
        }
        sätze.zahl(static_cast<qint32>(w.datum.isValid() ? w.datum.toJulianDay() : 0));
        sätze.zahl(static_cast<qint32>(w.dpi));
        sätze.zahl(static_cast<qint8>(w.rasse));
        sätze.zahl(static_cast<quint8>(w.ausgelassen));
        sätze.zahl(static_cast<quint8>(
            (satz.unlesbar ? 1 : 0) | (w.tiere == Geschlecht::Drohnen ? 2 : 0) |
            (w.urteil ? 4 : 0) | (w.urteil.value_or(false) ? 8 : 0) | (w.teilweise ? 16 : 0)));
        for (const Indexwerte& index : w.index) {
            schreibe(sätze, index);
        }
    }
    Schreiber datei;
    datei.bytes.assign(Kennung.data(), static_cast<std::size_t>(Kennung.size()));
    datei.zahl(regelmarke);
    datei.text(speicher.stand);
    datei.zahl(static_cast<quint32>(nummern.anzahl()));
    datei.bytes += texte.bytes;
    datei.zahl(static_cast<quint32>(speicher.sätze.size()));
    datei.bytes += sätze.bytes;
    datei.zahl(markeVon({datei.bytes.data(), static_cast<qsizetype>(datei.bytes.size())}));
    return QByteArray::fromStdString(datei.bytes);
}

std::optional<Koloniespeicher> speicherAus(const QByteArray& bytes, quint64 regelmarke) {
    constexpr qsizetype Markenlänge = sizeof(quint64);
    if (!bytes.startsWith(Kennung) || bytes.size() < Kennung.size() + 2 * Markenlänge) {
        return std::nullopt;
    }
    const QByteArrayView inhalt = QByteArrayView(bytes).chopped(Markenlänge);
    if (Leser(QByteArrayView(bytes).last(Markenlänge)).zahl<quint64>() != markeVon(inhalt)) {
        return std::nullopt;
    }
    Leser l(inhalt.sliced(Kennung.size()));
    if (l.zahl<quint64>() != regelmarke) {
        return std::nullopt;
    }
    Koloniespeicher speicher;
    speicher.stand = l.text().toByteArray();
    // Each has a few bytes at least, so that a wrong number cannot ask for all memory.
    const auto textzahl = l.zahl<quint32>();
    if (textzahl > l.rest()) {
        return std::nullopt;
    }
    std::vector<QString> texte(textzahl);
    for (QString& text : texte) {
        text = QString::fromUtf8(l.text());
    }
    const auto anzahl = l.zahl<quint32>();
    if (anzahl > l.rest()) {
        return std::nullopt;
    }
    speicher.sätze.resize(anzahl);
    for (Koloniesatz& satz : speicher.sätze) {
        Koloniewerte& w = satz.werte;
        satz.marke = l.zahl<quint64>();
        for (const auto text : Textfelder) {
            const auto stelle = l.zahl<quint32>();
            if (stelle >= texte.size()) {
                return std::nullopt;
            }
            w.*text = texte[stelle];
        }
        if (const auto tag = l.zahl<qint32>(); tag != 0) {
            w.datum = QDate::fromJulianDay(tag);
        }
        w.dpi = l.zahl<qint32>();
        w.rasse =
            static_cast<int>(l.zahl<qint8>()); // NOLINT(bugprone-signed-char-misuse): -1 is none
        w.ausgelassen = l.zahl<quint8>();
        const auto merker = l.zahl<quint8>();
        satz.unlesbar = (merker & 1) != 0;
        w.tiere = (merker & 2) != 0 ? Geschlecht::Drohnen : Geschlecht::Arbeiterinnen;
        w.urteil = (merker & 4) != 0 ? std::optional((merker & 8) != 0) : std::nullopt;
        w.teilweise = (merker & 16) != 0;
        for (Indexwerte& index : w.index) {
            lies(l, index);
        }
        l.ok = l.ok && kannStimmen(w);
    }
    return l.ok && l.amEnde() ? std::optional(std::move(speicher)) : std::nullopt;
}

} // namespace tarvel

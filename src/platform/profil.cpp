#include "platform/profil.h"

#include "platform/codepage.h"
#include "platform/dateiausgabe.h"
#include "platform/dateistand.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <memory>
#include <mutex>
#include <utility>

namespace tarvel {
namespace {

int gelesen = 0;

bool istLeerzeichen(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

// QByteArrayView::trimmed would also take the no-break blank of some C locales.
QByteArrayView getrimmt(QByteArrayView text) {
    while (!text.isEmpty() && istLeerzeichen(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && istLeerzeichen(text.back())) {
        text.chop(1);
    }
    return text;
}

QByteArrayView ohneBlanks(QByteArrayView text) {
    while (text.startsWith(' ')) {
        text = text.sliced(1);
    }
    while (text.endsWith(' ')) {
        text.chop(1);
    }
    return text;
}

std::array<char16_t, 256> kleinbuchstaben() {
    std::array<char16_t, 256> klein{};
    for (size_t i = 0; i < klein.size(); ++i) {
        const auto byte = static_cast<char>(static_cast<uchar>(i));
        klein[i] = ausCodepage1252(QByteArrayView(&byte, 1)).front().toLower().unicode();
    }
    return klein;
}

bool gleicherName(QByteArrayView a, QByteArrayView b) {
    static const std::array<char16_t, 256> klein = kleinbuchstaben();
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return klein[static_cast<uchar>(x)] == klein[static_cast<uchar>(y)];
    });
}

QByteArrayView bisZuEinem(QByteArrayView text, QByteArrayView ende) {
    const auto* stelle = std::find_first_of(text.begin(), text.end(), ende.begin(), ende.end());
    return text.first(stelle - text.begin());
}

constexpr char zeilenendeOderNul[] = {'\r', '\n', '\0'};

bool enthaeltEines(QByteArrayView text, QByteArrayView zeichen) {
    return bisZuEinem(text, zeichen).size() < text.size();
}

enum class Zeilenart { Leer, Kommentar, Sektion, Eintrag, Sonstiges };

struct Zeile {
    qsizetype anfang = 0;
    qsizetype textende = 0; // before the line end
    qsizetype ende = 0;     // after the line end
    Zeilenart art = Zeilenart::Leer;
    QByteArrayView name;
    QByteArrayView wert;

    [[nodiscard]] bool hatZeilenende() const { return ende > textende; }
};

void deute(Zeile& zeile, QByteArrayView text) {
    text = getrimmt(bisZuEinem(text, QByteArrayView("\0", 1)));
    if (text.isEmpty()) {
        zeile.art = Zeilenart::Leer;
    } else if (text.front() == ';') {
        zeile.art = Zeilenart::Kommentar;
    } else if (text.front() == '[') {
        zeile.art = Zeilenart::Sektion;
        zeile.name = getrimmt(bisZuEinem(text.sliced(1), "]"));
    } else if (const QByteArrayView name = bisZuEinem(text, "="); name.size() < text.size()) {
        zeile.art = Zeilenart::Eintrag;
        zeile.name = getrimmt(name);
        zeile.wert = getrimmt(text.sliced(name.size() + 1));
    } else {
        zeile.art = Zeilenart::Sonstiges;
    }
}

// Walks over the lines of a file; the lines' texts live as long as the bytes.
class Zeilenleser {
public:
    explicit Zeilenleser(QByteArrayView inhalt)
        : inhalt_(inhalt) {}

    std::optional<Zeile> nächste() {
        if (ort_ >= inhalt_.size()) {
            return std::nullopt;
        }
        Zeile zeile;
        zeile.anfang = ort_;
        const QByteArrayView text = bisZuEinem(inhalt_.sliced(ort_), "\r\n");
        zeile.textende = ort_ + text.size();
        zeile.ende = zeile.textende;
        if (zeile.ende < inhalt_.size()) {
            zeile.ende += inhalt_.sliced(zeile.ende).startsWith("\r\n") ? 2 : 1;
        }
        ort_ = zeile.ende;
        deute(zeile, text);
        return zeile;
    }

    std::optional<Zeile> zurSektion(QByteArrayView section) {
        while (const auto zeile = nächste()) {
            if (zeile->art == Zeilenart::Sektion && gleicherName(zeile->name, getrimmt(section))) {
                return zeile;
            }
        }
        return std::nullopt;
    }

    // The next line of the section the reader stands in.
    std::optional<Zeile> nächsteDerSektion() {
        const auto zeile = nächste();
        return zeile && zeile->art == Zeilenart::Sektion ? std::nullopt : zeile;
    }

private:
    QByteArrayView inhalt_;
    qsizetype ort_ = 0;
};

// A UTF-16 file is edited in the code page, so that the same rules serve; what that lacks stands as
// a byte without a character of its own and four digits.
constexpr QByteArrayView Utf16Marke("\xFF\xFE");
constexpr char Flucht = '\x81';
constexpr qsizetype Fluchtlänge = 5;

QByteArray mitFlucht(const QString& text) {
    QByteArray bytes;
    for (const QChar zeichen : text) {
        const QByteArray byte = nachCodepage1252(zeichen);
        if (ausCodepage1252(byte) == zeichen && byte.front() != Flucht) {
            bytes += byte;
        } else {
            bytes += Flucht + QByteArray::number(zeichen.unicode(), 16).rightJustified(4, '0');
        }
    }
    return bytes;
}

QByteArray ausUtf16(QByteArrayView bytes) {
    QString text;
    for (qsizetype i = Utf16Marke.size(); i + 1 < bytes.size(); i += 2) {
        text += QChar(static_cast<uchar>(bytes[i]), static_cast<uchar>(bytes[i + 1]));
    }
    return mitFlucht(text);
}

QByteArray nachUtf16(const QByteArray& inhalt) {
    QByteArray bytes = Utf16Marke.toByteArray();
    for (qsizetype i = 0; i < inhalt.size(); ++i) {
        char16_t zeichen = ausCodepage1252(QByteArrayView(inhalt).sliced(i, 1)).front().unicode();
        if (inhalt[i] == Flucht) {
            zeichen = static_cast<char16_t>(inhalt.mid(i + 1, 4).toUShort(nullptr, 16));
            i += Fluchtlänge - 1;
        }
        bytes += static_cast<char>(zeichen & 0xFF);
        bytes += static_cast<char>(zeichen >> 8);
    }
    return bytes;
}

QString mitAllenZeichen(const QByteArray& inhalt) {
    const QByteArray utf16 = nachUtf16(inhalt).sliced(Utf16Marke.size());
    QString text;
    for (qsizetype i = 0; i < utf16.size(); i += 2) {
        text += QChar(static_cast<uchar>(utf16[i]), static_cast<uchar>(utf16[i + 1]));
    }
    return text;
}

QByteArray ohneFlucht(QByteArray text) {
    for (qsizetype ort = text.indexOf(Flucht); ort >= 0; ort = text.indexOf(Flucht, ort)) {
        text.replace(ort, Fluchtlänge, "?");
    }
    return text;
}

QByteArrayView ohneAnfuehrung(QByteArrayView wert) {
    const bool umschlossen = wert.size() >= 2 && wert.front() == wert.back() &&
                             (wert.front() == '"' || wert.front() == '\'');
    return umschlossen ? wert.sliced(1, wert.size() - 2) : wert;
}

void entferneSektion(QByteArray& inhalt, QByteArrayView section) {
    Zeilenleser leser(inhalt);
    const auto kopf = leser.zurSektion(section);
    if (!kopf) {
        return;
    }
    QByteArray neu = inhalt.first(kopf->anfang);
    qsizetype ende = kopf->ende;
    while (const auto zeile = leser.nächsteDerSektion()) {
        if (zeile->art == Zeilenart::Kommentar) {
            neu += inhalt.sliced(zeile->anfang, zeile->ende - zeile->anfang);
        }
        ende = zeile->ende;
    }
    neu += inhalt.sliced(ende);
    inhalt = neu;
}

void fuegeZeilenEin(QByteArray& inhalt, qsizetype ort, bool davorZeilenende,
                    const QByteArray& zeilen) {
    inhalt.insert(ort, davorZeilenende ? zeilen : "\r\n" + zeilen);
}

void setzeEintrag(QByteArray& inhalt, QByteArrayView section, QByteArrayView key,
                  std::optional<QByteArrayView> value) {
    const QByteArray neueZeile =
        value ? key.toByteArray() + '=' + value->toByteArray() + "\r\n" : QByteArray();
    Zeilenleser leser(inhalt);
    const auto kopf = leser.zurSektion(section);
    if (!kopf) {
        const bool fertig = inhalt.isEmpty() || inhalt.endsWith('\n') || inhalt.endsWith('\r');
        if (value) {
            fuegeZeilenEin(inhalt, inhalt.size(), fertig,
                           '[' + section.toByteArray() + "]\r\n" + neueZeile);
        }
        return;
    }
    Zeile letzte = *kopf;
    while (const auto zeile = leser.nächsteDerSektion()) {
        if (zeile->art == Zeilenart::Eintrag && gleicherName(zeile->name, key)) {
            if (!value) {
                inhalt.remove(zeile->anfang, zeile->ende - zeile->anfang);
                return;
            }
            QByteArray ersatz = zeile->name.toByteArray() + '=' + value->toByteArray();
            if (!zeile->hatZeilenende()) {
                ersatz += "\r\n";
            }
            inhalt.replace(zeile->anfang, zeile->textende - zeile->anfang, ersatz);
            return;
        }
        if (zeile->art == Zeilenart::Eintrag || zeile->art == Zeilenart::Sonstiges) {
            letzte = *zeile;
        }
    }
    if (value) {
        fuegeZeilenEin(inhalt, letzte.ende, letzte.hatZeilenende(), neueZeile);
    }
}

QByteArray namensliste(const QList<QByteArray>& namen, int size) {
    QByteArray liste;
    for (const QByteArray& name : namen) {
        liste += name + '\0';
    }
    const bool passt = liste.size() < size;
    return passt ? liste : liste.first(std::max(0, size - 2));
}

} // namespace

Profil::Profil(QString path)
    : path_(std::move(path)) {
    const QFileInfo datei(path_);
    if (!datei.exists()) {
        ungesichert_ = true;
        return;
    }
    unlesbar_ = true;
    QFile quelle(path_);
    if (!datei.isFile() || datei.size() > GrößteDatei || !quelle.open(QIODevice::ReadOnly)) {
        return;
    }
    ++gelesen;
    QByteArray inhalt = quelle.readAll();
    utf16_ = inhalt.startsWith(Utf16Marke);
    if (quelle.error() != QFile::NoError || inhalt.startsWith("\xFE\xFF") ||
        (utf16_ && inhalt.size() % 2 != 0)) {
        return;
    }
    inhalt_ = utf16_ ? ausUtf16(inhalt) : std::move(inhalt);
    unlesbar_ = false;
}

int Profil::lesungen() {
    return gelesen;
}

std::optional<QByteArray> Profil::wert(QByteArrayView section, QByteArrayView key) const {
    const auto roh = rohwert(section, key);
    return roh ? std::optional(lesbar(*roh)) : std::nullopt;
}

std::optional<QString> Profil::text(QByteArrayView section, QByteArrayView key) const {
    const auto roh = rohwert(section, key);
    return !roh ? std::nullopt
                : std::optional(utf16_ ? mitAllenZeichen(*roh) : ausCodepage1252(*roh));
}

std::optional<QByteArray> Profil::rohwert(QByteArrayView section, QByteArrayView key) const {
    const QByteArrayView gesucht = ohneBlanks(key);
    Zeilenleser leser(inhalt_);
    if (!leser.zurSektion(section)) {
        return std::nullopt;
    }
    while (const auto zeile = leser.nächsteDerSektion()) {
        if (zeile->art == Zeilenart::Eintrag && gleicherName(zeile->name, gesucht)) {
            return ohneAnfuehrung(zeile->wert).toByteArray();
        }
    }
    return std::nullopt;
}

QByteArray Profil::lesbar(const QByteArray& text) const {
    return utf16_ ? ohneFlucht(text) : text;
}

QList<QByteArray> Profil::sektionen() const {
    QList<QByteArray> namen;
    Zeilenleser leser(inhalt_);
    while (const auto zeile = leser.nächste()) {
        if (zeile->art == Zeilenart::Sektion && !zeile->name.isEmpty()) {
            namen += lesbar(zeile->name.toByteArray());
        }
    }
    return namen;
}

QList<QByteArray> Profil::schlüssel(QByteArrayView section) const {
    QList<QByteArray> namen;
    Zeilenleser leser(inhalt_);
    if (!leser.zurSektion(section)) {
        return namen;
    }
    while (const auto zeile = leser.nächsteDerSektion()) {
        if (zeile->art == Zeilenart::Eintrag && !zeile->name.isEmpty()) {
            namen += lesbar(zeile->name.toByteArray());
        }
    }
    return namen;
}

bool Profil::setze(QByteArrayView section, std::optional<QByteArrayView> key,
                   std::optional<QByteArrayView> value) {
    const QByteArray roh = utf16_ && value ? mitFlucht(ausCodepage1252(*value))
                                           : value.value_or(QByteArrayView()).toByteArray();
    return setzeRoh(section, key, value ? std::optional<QByteArrayView>(roh) : std::nullopt);
}

bool Profil::setzeText(QByteArrayView section, QByteArrayView key, const QString& value) {
    const QByteArray bytes = nachCodepage1252(value);
    if (utf16_ || ausCodepage1252(bytes) == value) {
        return setzeRoh(section, key, utf16_ ? mitFlucht(value) : bytes);
    }
    const QByteArray vorher = std::exchange(inhalt_, mitFlucht(ausCodepage1252(inhalt_)));
    utf16_ = true;
    if (setzeRoh(section, key, mitFlucht(value))) {
        ungesichert_ = true;
        return true;
    }
    inhalt_ = vorher;
    utf16_ = false;
    return false;
}

bool Profil::setzeRoh(QByteArrayView section, std::optional<QByteArrayView> key,
                      std::optional<QByteArrayView> value) {
    const QByteArrayView verboten(zeilenendeOderNul, sizeof zeilenendeOderNul);
    section = getrimmt(section);
    if (enthaeltEines(section, verboten) || section.contains(']')) {
        return false;
    }
    if (utf16_ && (section.contains(Flucht) || (key && key->contains(Flucht)))) {
        return false;
    }

    const QByteArray vorher = inhalt_;
    if (key) {
        const QByteArrayView name = ohneBlanks(*key);
        if (enthaeltEines(name, verboten) || name.contains('=') || name.startsWith('[') ||
            getrimmt(name) != name) {
            return false;
        }
        if (value) {
            value = bisZuEinem(*value, verboten);
        }
        setzeEintrag(inhalt_, section, name, value);
    } else {
        entferneSektion(inhalt_, section);
    }
    ungesichert_ = ungesichert_ || inhalt_ != vorher;
    return true;
}

bool Profil::sichere() {
    const QByteArray bytes = utf16_ ? nachUtf16(inhalt_) : inhalt_;
    if (unlesbar_ || path_.isEmpty() || bytes.size() > GrößteDatei) {
        return false;
    }
    if (!ungesichert_) {
        return true;
    }
    ungesichert_ = schreibeDatei(path_, bytes).has_value();
    return !ungesichert_;
}

QString alsProfilwert(const QString& wert) {
    const QByteArray bytes = mitFlucht(wert);
    const bool verändert = ohneAnfuehrung(getrimmt(bytes)) != bytes;
    return verändert ? u'"' + wert + u'"' : wert;
}

namespace {

// One file is what a program reads its settings from.
std::shared_ptr<const Profil> gelesenesProfil(const QString& path) {
    struct Stand {
        QString path;
        std::optional<Dateistand> datei;
        std::shared_ptr<const Profil> profil;
    };
    static std::mutex schloss;
    static std::optional<Stand> letzter;
    const std::lock_guard allein(schloss);
    const std::optional<Dateistand> jetzt = dateistand(path);
    if (!letzter || !jetzt || letzter->path != path || letzter->datei != jetzt) {
        // What changes while it is read, or at once after it, is read again next time.
        const auto merkbar = jetzt && !jetzt->frisch() ? jetzt : std::nullopt;
        letzter = Stand{path, merkbar, std::make_shared<Profil>(path)};
    }
    return letzter->profil;
}

} // namespace

QByteArray GetPrivateProfileStringA(std::optional<QByteArrayView> section,
                                    std::optional<QByteArrayView> key,
                                    std::optional<QByteArrayView> vorgabe, int size,
                                    const QString& path) {
    const auto profil = gelesenesProfil(path);
    if (!section) {
        return namensliste(profil->sektionen(), size);
    }
    if (!key) {
        const QList<QByteArray> namen = profil->schlüssel(*section);
        if (!namen.isEmpty()) {
            return namensliste(namen, size);
        }
    } else if (const auto wert = profil->wert(*section, *key)) {
        return wert->left(std::max(0, size - 1));
    }
    QByteArray ersatz = vorgabe.value_or(QByteArrayView()).toByteArray();
    while (ersatz.endsWith(' ')) {
        ersatz.chop(1);
    }
    return ersatz.left(std::max(0, size - 1));
}

QString profiltext(QByteArrayView section, QByteArrayView key, int size, const QString& path) {
    QString text =
        gelesenesProfil(path)->text(section, key).value_or(QString()).left(std::max(0, size - 1));
    if (!text.isEmpty() && text.back().isHighSurrogate()) {
        text.chop(1);
    }
    return text;
}

int GetPrivateProfileIntA(QByteArrayView section, QByteArrayView key, int vorgabe,
                          const QString& path) {
    const auto wert = gelesenesProfil(path)->wert(section, key);
    if (!wert) {
        return vorgabe;
    }
    QByteArrayView rest = getrimmt(*wert);
    const bool negativ = rest.startsWith('-');
    if (negativ || rest.startsWith('+')) {
        rest = rest.sliced(1);
    }
    quint32 betrag = 0;
    for (const char ziffer : rest) {
        if (ziffer < '0' || ziffer > '9') {
            break;
        }
        betrag = betrag * 10 + static_cast<quint32>(ziffer - '0');
    }
    return static_cast<int>(negativ ? 0U - betrag : betrag);
}

bool WritePrivateProfileStringA(QByteArrayView section, std::optional<QByteArrayView> key,
                                std::optional<QByteArrayView> value, const QString& path) {
    Profil profil(path);
    return profil.setze(section, key, value) && profil.sichere();
}

} // namespace tarvel

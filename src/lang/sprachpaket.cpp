#include "lang/sprachpaket.h"

#include "lang/texte.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* textnamen[] = {
#define TARVEL_TEXT(id, de, en, fr) #id,
#include "lang/texttabelle.inc"
#undef TARVEL_TEXT
};

constexpr const char* meldungsnamen[] = {
#define TARVEL_MELDUNG(id, de, en, fr) #id,
#include "lang/meldungstabelle.inc"
#undef TARVEL_MELDUNG
};

/// Words that stand in stored lines, fields and file names, where every version looks for them.
constexpr std::array Dateiworte{Text::CI,     Text::HI,       Text::DV,
                                Text::Klasse, Text::Arbeiter, Text::Drohnen,
                                Text::Ja,     Text::Nein,     Text::MeineTabelle};

/// A place in the tables, and the words that stand there in the three languages.
struct Platz {
    bool meldung = false;
    int nummer = 0;

    [[nodiscard]] QString wort(Sprache sprache) const {
        return meldung ? Texte::eintrag(static_cast<Meldung>(nummer), sprache)
                       : Texte::eintrag(static_cast<Text>(nummer), sprache);
    }
};

const std::map<QString, Platz>& plätze() {
    static const std::map<QString, Platz> alle = [] {
        std::map<QString, Platz> namen;
        for (int i = 0; i < anzahlTexte; ++i) {
            if (std::find(Dateiworte.begin(), Dateiworte.end(), static_cast<Text>(i)) ==
                Dateiworte.end()) {
                namen.emplace(u"Text."_s + QString::fromUtf8(textnamen[i]), Platz{false, i});
            }
        }
        for (int i = 0; i < anzahlMeldungen; ++i) {
            namen.emplace(u"Meldung."_s + QString::fromUtf8(meldungsnamen[i]), Platz{true, i});
        }
        return namen;
    }();
    return alle;
}

std::set<QString> stellen(const QString& text) {
    static const QRegularExpression muster(u"%\\d"_s);
    std::set<QString> gefunden;
    for (auto m = muster.globalMatch(text); m.hasNext();) {
        gefunden.insert(m.next().captured());
    }
    return gefunden;
}

QString alsZeile(QString text) {
    return text.replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s);
}

QString ausZeile(const QString& text) {
    QString ergebnis;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool flucht = text[i] == u'\\' && i + 1 < text.size();
        if (flucht) {
            ++i;
            ergebnis += text[i] == u'n' ? QChar(u'\n') : text[i];
        } else if (text[i].category() != QChar::Other_Control) {
            ergebnis += text[i];
        }
    }
    return ergebnis;
}

/// @p wert with the blanks that @p eigenes has around it, which a line cannot show.
QString mitRand(const QString& wert, const QString& eigenes) {
    const auto steht = [](QChar zeichen) { return !zeichen.isSpace(); };
    const auto anfang = std::find_if(eigenes.begin(), eigenes.end(), steht) - eigenes.begin();
    const auto ende = std::find_if(eigenes.rbegin(), eigenes.rend(), steht) - eigenes.rbegin();
    return eigenes.left(anfang) + wert + eigenes.right(ende);
}

/// Puts a line in. False when it cannot be taken.
bool nimm(Sprachpaket& paket, const QString& name, const QString& wert) {
    if (name == "language"_L1) {
        paket.name = wert.left(60).trimmed();
        return true;
    }
    if (name == "locale"_L1) {
        paket.gebiet = wert.left(20).trimmed();
        return true;
    }
    const auto platz = plätze().find(name);
    if (platz == plätze().end()) {
        return false;
    }
    if (wert.isEmpty()) {
        return true;
    }
    auto& tabelle = platz->second.meldung ? paket.meldungen : paket.texte;
    const QString eigenes = platz->second.wort(Sprache::Englisch);
    return stellen(wert) == stellen(eigenes) &&
           tabelle.emplace(platz->second.nummer, mitRand(wert, eigenes)).second;
}

} // namespace

int umfangSprachpaket() {
    return static_cast<int>(plätze().size());
}

std::optional<Sprachpaket> leseSprachpaket(const QByteArray& inhalt) {
    QStringDecoder dekoder(QStringDecoder::Utf8);
    const QString text = dekoder(inhalt);
    const QStringList zeilen = text.split(u'\n');
    if (dekoder.hasError() || zeilen.constFirst().trimmed() != QLatin1StringView(Sprachpaketkopf)) {
        return std::nullopt;
    }
    Sprachpaket paket;
    for (qsizetype i = 1; i < zeilen.size(); ++i) {
        const QString zeile = zeilen[i].trimmed();
        if (zeile.isEmpty() || zeile.startsWith(u'#')) {
            continue;
        }
        const qsizetype gleich = zeile.indexOf(u'=');
        if (gleich < 0 || !nimm(paket, zeile.left(gleich).trimmed(),
                                ausZeile(zeile.sliced(gleich + 1).trimmed()))) {
            paket.abgewiesen.push_back(static_cast<int>(i) + 1);
        }
    }
    return paket;
}

std::optional<Sprachpaket> ladeSprachpaket(const QString& pfad) {
    QFile datei(pfad);
    if (!QFileInfo(pfad).isFile() || datei.size() > GrößtesSprachpaket ||
        !datei.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray inhalt = datei.read(GrößtesSprachpaket);
    return datei.error() == QFile::NoError ? leseSprachpaket(inhalt) : std::nullopt;
}

QByteArray sprachpaketvorlage(const Texte& texte) {
    const Sprachpaket paket = texte.paket().value_or(Sprachpaket());
    const Sprache sprache = texte.sprache().value_or(Sprache::Englisch);
    QString vorlage = QLatin1StringView(Sprachpaketkopf) +
                      u"\n# UTF-8, one text a line: name = words. \\n breaks a line, %1, %2 stand "
                      "for what the program puts in.\nlanguage = "_s +
                      alsZeile(paket.name) + u"\nlocale = "_s + alsZeile(paket.gebiet) + u'\n';
    for (const auto& [name, platz] : plätze()) {
        const auto& tabelle = platz.meldung ? paket.meldungen : paket.texte;
        const auto eigener = tabelle.find(platz.nummer);
        vorlage += u"\n# "_s + alsZeile(platz.wort(sprache)) + u'\n' + name + u" = "_s +
                   (eigener == tabelle.end() ? QString() : alsZeile(eigener->second)) + u'\n';
    }
    return vorlage.toUtf8();
}

} // namespace tarvel

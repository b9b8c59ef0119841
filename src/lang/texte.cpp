#include "lang/texte.h"

#include <iterator>
#include <string_view>
#include <utility>

namespace tarvel {

namespace {

using namespace Qt::StringLiterals;

/// A text in the three languages, in the order of their numbers.
using Zeile = std::array<std::u16string_view, anzahlSprachen>;

constexpr Zeile texttabelle[] = {
#define TARVEL_TEXT(id, de, en, fr) Zeile{u"" de, u"" en, u"" fr},
#include "lang/texttabelle.inc"
#undef TARVEL_TEXT
};
static_assert(std::size(texttabelle) == anzahlTexte, "the table of texts is fixed");

constexpr Zeile meldungstabelle[] = {
#define TARVEL_MELDUNG(id, de, en, fr) Zeile{u"" de, u"" en, u"" fr},
#include "lang/meldungstabelle.inc"
#undef TARVEL_MELDUNG
};

QString spalte(const Zeile& zeile, Sprache sprache) {
    return QStringView(zeile.at(static_cast<std::size_t>(sprache))).toString();
}

} // namespace

Texte::Texte(QString programmordner, QObject* parent)
    : QObject(parent)
    , programmordner_(std::move(programmordner)) {
    kopiereSpalte(Sprache::Deutsch);
}

void Texte::SpracheDeutsch() {
    lade(Sprache::Deutsch);
}

void Texte::SpracheEnglisch() {
    lade(Sprache::Englisch);
}

void Texte::SpracheFranzösisch() {
    lade(Sprache::Französisch);
}

bool Texte::SpracheEinstellen(int nummer) {
    switch (nummer) {
    case static_cast<int>(Sprache::Deutsch):
        SpracheDeutsch();
        return true;
    case static_cast<int>(Sprache::Englisch):
        SpracheEnglisch();
        return true;
    case static_cast<int>(Sprache::Französisch):
        SpracheFranzösisch();
        return true;
    default:
        return false;
    }
}

const QString& Texte::operator()(Text id) const {
    return texte_.at(static_cast<std::size_t>(id));
}

const QString& Texte::operator()(Meldung id) const {
    return meldungen_.at(static_cast<std::size_t>(id));
}

QString Texte::eintrag(Text id, Sprache sprache) {
    return spalte(texttabelle[static_cast<std::size_t>(id)], sprache);
}

QString Texte::eintrag(Meldung id, Sprache sprache) {
    return spalte(meldungstabelle[static_cast<std::size_t>(id)], sprache);
}

void Texte::kopiereSpalte(Sprache sprache) {
    for (std::size_t i = 0; i < texte_.size(); ++i) {
        texte_[i] = spalte(texttabelle[i], sprache);
    }
    for (std::size_t i = 0; i < meldungen_.size(); ++i) {
        meldungen_[i] = spalte(meldungstabelle[i], sprache);
    }
    if (paket_) {
        for (const auto& [nummer, wort] : paket_->texte) {
            texte_.at(static_cast<std::size_t>(nummer)) = wort;
        }
        for (const auto& [nummer, wort] : paket_->meldungen) {
            meldungen_.at(static_cast<std::size_t>(nummer)) = wort;
        }
    }
}

void Texte::setzePaket(std::optional<Sprachpaket> paket) {
    paket_ = std::move(paket);
    kopiereSpalte(sprache_.value_or(Sprache::Deutsch));
    Q_EMIT languageChanged();
}

void Texte::lade(Sprache sprache) {
    kopiereSpalte(sprache);
    HilfeDatei_ = programmordner_ + u"/Tarvel.chm"_s;
    sprache_ = sprache;
    Q_EMIT languageChanged();
}

Meldung sprachname(Sprache sprache) {
    switch (sprache) {
    case Sprache::Englisch:
        return Meldung::NameEnglisch;
    case Sprache::Französisch:
        return Meldung::NameFranzösisch;
    case Sprache::Deutsch:
        break;
    }
    return Meldung::NameDeutsch;
}

} // namespace tarvel

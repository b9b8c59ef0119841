#include "evaluation/urteilsanzeige.h"

#include "evaluation/urteilstext.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

const QString ZielNeu = u"neu"_s;
const QString ZielKriterien = u"kriterien"_s;

QString verweis(const QString& ziel, const QString& text) {
    return u"<a href=\"%1\">%2</a>"_s.arg(ziel, text.toHtmlEscaped());
}

} // namespace

Urteilsanzeige::Urteilsanzeige(const Texte& texte, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , überschrift_(new QLabel)
    , lab_Urteil_(new QLabel)
    , lab_Grundlage_(new QLabel)
    , lab_Mängel_(new QLabel)
    , lab_Gespeichert_(new QLabel)
    , lab_Kriterien_(new QLabel) {
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    QFont fett = lab_Urteil_->font();
    fett.setBold(true);
    lab_Urteil_->setFont(fett);
    lab_Urteil_->setObjectName(u"lab_Urteil"_s);
    lab_Grundlage_->setObjectName(u"lab_Grundlage"_s);
    lab_Mängel_->setObjectName(u"lab_Mängel"_s);
    lab_Gespeichert_->setObjectName(u"lab_Gespeichert"_s);
    lab_Kriterien_->setObjectName(u"lab_Kriterien"_s);
    for (QLabel* label : {überschrift_, lab_Urteil_, lab_Grundlage_, lab_Mängel_, lab_Kriterien_,
                          lab_Gespeichert_}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(label);
    }
    for (QLabel* label : {lab_Mängel_, lab_Kriterien_, lab_Gespeichert_}) {
        label->setTextFormat(Qt::RichText);
        label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        connect(label, &QLabel::linkActivated, this, [this](const QString& ziel) { folge(ziel); });
    }
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

void Urteilsanzeige::zeige(const Beurteilung& beurteilung, const QString& rasse,
                           const Zahlenformat& format, std::optional<bool> gespeichertes,
                           const std::optional<Urteilsbeleg>& beleg, bool nachVorgaben) {
    beurteilung_ = beurteilung;
    rasse_ = rasse;
    format_ = format;
    gespeichertes_ = gespeichertes;
    nachVorgaben_ = nachVorgaben;
    beleg_ = beleg;
    beschrifte();
}

void Urteilsanzeige::beschrifte() {
    überschrift_->setText(texte_(Text::Beurteilung));
    const std::optional<bool> urteil = beurteilung_.urteil();
    QStringList mängel;
    if (urteil) {
        for (const Prüfwert& mangel : beurteilung_.mängel()) {
            mängel << u"• "_s + verweis(QString::number(mängel.size()),
                                        mangeltext(mangel, texte_, format_));
        }
    }
    // The sign says it too, for those who read no colour and no long sentence.
    lab_Urteil_->setText(urteil ? (*urteil ? u"✓ "_s : u"✗ "_s) + texte_(urteilssatz(*urteil)) +
                                      u' ' + rasse_
                                : unbeurteilttext(beurteilung_, rasse_, texte_));
    QStringList grundlage;
    if (urteil) {
        grundlage << grundlagentext(beurteilung_.umfang, texte_);
        if (nachVorgaben_) {
            grundlage << texte_(Meldung::GrundlageVorgaben);
        }
    }
    if (const QString satz = bemerkung_ ? bemerkung_() : QString(); !satz.isEmpty()) {
        grundlage << satz;
    }
    lab_Grundlage_->setText(grundlage.join(u'\n'));
    lab_Mängel_->setText(mängel.join(u"<br>"_s));
    lab_Kriterien_->setText(beurteilung_.BewertungAktiv
                                ? verweis(ZielKriterien, texte_(Meldung::AlleKriterien))
                                : QString());
    lab_Kriterien_->setToolTip(texte_(Meldung::TippKriterien));
    lab_Mängel_->setToolTip(texte_(Meldung::TippMangel));
    lab_Gespeichert_->setText(gespeichertes());
    lab_Gespeichert_->setToolTip(beleg_ ? beleg_->abweichungen.join(u'\n') : QString());
    for (QLabel* label : {lab_Grundlage_, lab_Mängel_, lab_Kriterien_, lab_Gespeichert_}) {
        label->setVisible(!label->text().isEmpty());
    }
}

/// What is to be said of a stored verdict: that it is another one, by which standard it was given,
/// and which limits are others now.
QString Urteilsanzeige::gespeichertes() const {
    if (!gespeichertes_) {
        return {};
    }
    const Urteilsvergleich v =
        urteilsvergleich(*gespeichertes_, beurteilung_.urteil(), beleg_, texte_);
    const QString text = v.text.toHtmlEscaped();
    return v.anders ? text + u' ' + verweis(ZielNeu, texte_(Meldung::NeuBeurteilen)) : text;
}

void Urteilsanzeige::folge(const QString& ziel) const {
    if (ziel == ZielNeu) {
        if (beiNeubeurteilung_) {
            beiNeubeurteilung_();
        }
        return;
    }
    if (ziel == ZielKriterien) {
        if (beiKriterienwunsch_) {
            beiKriterienwunsch_();
        }
        return;
    }
    const std::vector<Prüfwert> mängel = beurteilung_.mängel();
    if (const std::size_t i = ziel.toUInt(); i < mängel.size() && beiMangelwahl_) {
        beiMangelwahl_(mängel[i]);
    }
}

} // namespace tarvel

#include "app/protokollausgabe.h"

#include "app/austausch.h"
#include "app/sprachpaketgang.h"
#include "lang/uebersetz.h"
#include "lang/zielwahl.h"
#include "measure/messplatz.h"
#include "print/drucken.h"
#include "print/vorschau.h"

#include <QDir>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

Protokollausgabe::Protokollausgabe(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , untersuchung_(arbeitsplatz.untersuchung())
    , druckerwahl_(umgebung.drucker, umgebung.einstellungen)
    , vorschau_(new Vorschau(umgebung.texte)) {
    vorschau_->beiBlättern([this](int um) {
        if (beiSeitenwahl_) {
            beiSeitenwahl_(seite_ + um);
        }
    });
}

Protokollausgabe::~Protokollausgabe() {
    delete übersetz_;
}

QWidget& Protokollausgabe::vorschau() const {
    return *vorschau_;
}

int Protokollausgabe::seitenzahl() const {
    return tarvel::seitenzahl(ladeProtokollart(umgebung_.einstellungen));
}

Protokolltexte Protokollausgabe::texte() const {
    Protokolltexte standard = ProtokolltexteStandard(umgebung_.texte);
    if (!umgebung_.einstellungen.schalter(Einstellung::Übersetzen)) {
        return standard;
    }
    ÜbersetzungLaden(umgebung_.einstellungen.IniPfad(), standard.felder);
    return ProtokolltexteÜbersetzt(standard.felder);
}

bool Protokollausgabe::istAnhang(int seite) const {
    return seite > seitenzahl() && umgebung_.einstellungen.schalter(Einstellung::Anhang);
}

Flügelbild Protokollausgabe::flügelbild() const {
    if (messplatz_ == nullptr) {
        return {};
    }
    auto bilder = std::make_shared<Flügelbilder>(messplatz_->flügelbilder());
    auto bisher = std::make_shared<Flügelschnitte>(std::exchange(schnitte_, {}));
    return [this, bilder, bisher](const Flügelmessung& flügel, const QRect& ausschnitt) {
        const auto da = std::find_if(bisher->begin(), bisher->end(),
                                     [&flügel](const auto& s) { return s.first == flügel; });
        QImage bild = da != bisher->end() ? da->second : bilder->hole(flügel, ausschnitt);
        schnitte_.emplace_back(flügel, bild);
        return bild;
    };
}

std::shared_ptr<const Protokollausgabe::Vorlage> Protokollausgabe::vorlage(bool bilder) const {
    const Protokolleinstellungen einstellungen =
        ladeProtokolleinstellungen(umgebung_.einstellungen);
    const Protokolltexte worte = probe_ ? ProtokolltexteÜbersetzt(*probe_) : texte();
    return std::make_shared<Vorlage>(Vorlage{
        .daten =
            protokolldaten({.untersuchung = untersuchung_,
                            .standard = arbeitsplatz_.standard(),
                            .einstellungen = einstellungen,
                            .texte = umgebung_.texte,
                            .protokolltexte = worte,
                            .format = umgebung_.format,
                            .heute = umgebung_.uhr.now().date(),
                            .bild = bilder && einstellungen.Anhang ? flügelbild() : Flügelbild()}),
        .grafik = Briefkopfgrafik(einstellungen.briefkopf)});
}

void Protokollausgabe::zeigeSeite(int nummer) {
    seite_ = nummer;
    std::erase_if(schnitte_, [](const auto& s) { return s.second.isNull(); }); // looked for anew
    zeige(vorlage(istAnhang(nummer)));
}

void Protokollausgabe::zeige(std::shared_ptr<const Vorlage> neue) {
    seite_ = std::clamp(seite_, 1, tarvel::seitenzahl(neue->daten));
    vorschau_->zeige([neue = std::move(neue), seite = seite_](QPainter& painter) {
        maleProtokoll(painter, neue->daten, neue->grafik, seite);
    });
}

void Protokollausgabe::aktualisiere() {
    if (vorschau_->isVisible()) {
        zeige(vorlage(istAnhang(seite_)));
    }
}

QStringList Protokollausgabe::fehlendes() const {
    const Einstellungen& e = umgebung_.einstellungen;
    const Texte& t = umgebung_.texte;
    const Messreihe& reihe = untersuchung_.reihe();
    const Kolonieangaben& angaben = untersuchung_.angaben();
    const bool ohneKönigin = angaben.KNr.trimmed().isEmpty() && angaben.Name.trimmed().isEmpty();
    const Protokollart art = ladeProtokollart(e);
    QStringList namen;
    for (const auto& [warnung, fehlt, name] :
         {std::tuple{Einstellung::WarnungCubitalindex, reihe.ciZeilen().empty(),
                     Text::Cubitalindex},
          {Einstellung::WarnungHantelindex,
           art != Protokollart::Cubitalindex && reihe.hiDvZeilen().empty(), Text::HantelindexUndDV},
          {Einstellung::WarnungMerkmale, untersuchung_.merkmale().leer(), Text::KörperMerkmale},
          {Einstellung::WarnungKönigin, ohneKönigin, Text::Königin}}) {
        if (fehlt && e.schalter(warnung)) {
            namen << t(name);
        }
    }
    if (Briefkopfgrafik(ladeBriefkopf(e)).fehler() != Grafikfehler::Keiner) {
        namen << t(Text::GrafikFürBriefkopf);
    }
    return namen;
}

void Protokollausgabe::drucke(QWidget* fenster, const QString& ordner) {
    const Texte& t = umgebung_.texte;
    const QString& titel = t(Text::MenüProtokollDrucken);
    if (untersuchung_.reihe().leer() && untersuchung_.merkmale().leer()) {
        umgebung_.dialoge.meldung(titel, t(Meldung::ProtokollOhneFlügel), Meldungsart::Ausruf);
        return;
    }
    if (const QStringList namen = fehlendes();
        !namen.isEmpty() &&
        umgebung_.dialoge.frage({.titel = titel,
                                 .text = t(Meldung::FehlendeWerteFrage).arg(namen.join(u", "_s)),
                                 .art = Meldungsart::Ausruf,
                                 .ja = t(Meldung::TrotzdemDrucken),
                                 .nein = t(Meldung::NichtDrucken)}) != Antwort::Ja) {
        return;
    }
    const auto gedruckt = vorlage(true);
    const QString nummer = alsDateiname(untersuchung_.angaben().UNr);
    Drucken_ dialog(
        {.texte = t,
         .dialoge = umgebung_.dialoge,
         .drucker = umgebung_.drucker,
         .wahl = druckerwahl_},
        {.daten = gedruckt->daten,
         .grafik = gedruckt->grafik,
         .titel = gedruckt->daten.titel,
         .pdf = QDir(ordner).filePath((nummer.isEmpty() ? t(Text::Protokoll) : nummer) + u".pdf"_s),
         .tabelle = flügeltabelle(umgebung_, arbeitsplatz_),
         .mitTabelle = umgebung_.einstellungen.schalter(Einstellung::DatenDaneben)},
        fenster);
    dialog.exec();
    if (dialog.mitTabelle() != umgebung_.einstellungen.schalter(Einstellung::DatenDaneben)) {
        umgebung_.einstellungen.schreibe(Einstellung::DatenDaneben, dialog.mitTabelle() ? 1 : 0);
    }
    if (!dialog.geschrieben().isEmpty() && beiHinweis_) {
        beiHinweis_({Meldung::DateiGeschrieben, {dialog.geschrieben()}});
    }
}

void Protokollausgabe::merkeDrucker() {
    druckerwahl_.merkeVorher();
    if (druckerwahl_.hatAltes()) {
        stelleDruckerNachAbsturzHer();
    }
}

void Protokollausgabe::stelleDruckerNachAbsturzHer() {
    constexpr int Abfrage = 50; // milliseconds
    if (!druckerwahl_.hatAntwort()) {
        QTimer::singleShot(Abfrage, vorschau_, [this] { stelleDruckerNachAbsturzHer(); });
        return;
    }
    if (const auto wieder = druckerwahl_.stelleAltesHer(); wieder && beiHinweis_) {
        beiHinweis_({Meldung::StandarddruckerWiederDa, {*wieder}});
    }
}

bool Protokollausgabe::verlasseÜbersetzung() {
    auto* editor = static_cast<Übersetz*>(übersetz_.data());
    if (editor == nullptr || !editor->isVisible() || !editor->geändert()) {
        return true;
    }
    const Texte& t = umgebung_.texte;
    const QString& titel = t(Text::ProtokollÜbersetzen);
    const Antwort antwort =
        umgebung_.dialoge.frage({.titel = titel,
                                 .text = u"' "_s + titel + t(Text::WurdeGeändert),
                                 .art = Meldungsart::Frage,
                                 .mitAbbrechen = true});
    return antwort == Antwort::Nein || (antwort == Antwort::Ja && editor->SpeichernInINI());
}

void Protokollausgabe::bieteTexteAn() {
    const Texte& t = umgebung_.texte;
    if (!umgebung_.einstellungen.schalter(Einstellung::Übersetzen) &&
        umgebung_.dialoge.frage({.titel = t(Text::ProtokollÜbersetzen),
                                 .text = t(Meldung::EigeneTexteNutzen),
                                 .art = Meldungsart::Frage,
                                 .ja = t(Meldung::TexteVerwenden),
                                 .nein = t(Meldung::TexteNochNicht)}) == Antwort::Ja) {
        umgebung_.einstellungen.schreibe(Einstellung::Übersetzen, 1);
    }
}

void Protokollausgabe::übersetze(QWidget* fenster) {
    if (übersetz_ == nullptr) {
        auto* editor = new Übersetz(
            umgebung_.texte, umgebung_.einstellungen.IniPfad(), umgebung_.dialoge, umgebung_.shell,
            [this](const Protokollfelder& felder, int seite) {
                probe_ = felder;
                for (const int nummer : {1, 2, seite}) {
                    beiSeitenwahl_(std::min(nummer, seitenzahl()));
                }
            },
            fenster);
        editor->setAttribute(Qt::WA_DeleteOnClose);
        editor->beiSprachpaket(
            [this](Paketwunsch wunsch) { Sprachpaketgang(umgebung_).führeAus(wunsch); });
        QObject::connect(editor, &QDialog::finished, vorschau_, [this, editor](int ergebnis) {
            probe_.reset();
            if (ergebnis == QDialog::Accepted && editor->eigene() > 0) {
                bieteTexteAn();
            }
            aktualisiere();
        });
        übersetz_ = editor;
        // At the left, so that the preview beside it stays in sight.
        editor->move(fenster->frameGeometry().topLeft());
        beiSeitenwahl_(std::min(seite_, seitenzahl()));
    }
    übersetz_->show();
    übersetz_->raise();
    übersetz_->activateWindow();
}

} // namespace tarvel

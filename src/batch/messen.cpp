#include "batch/messen.h"

#include "batch/messergebnis.h"
#include "detect/bildpixel.h"
#include "detect/faeden.h"
#include "detect/fundzeichnung.h"
#include "evaluation/rassen.h"
#include "lang/zielwahl.h"
#include "measure/bildaufloesung.h"
#include "measure/bildort.h"
#include "measure/reihenmodelle.h"
#include "platform/dateiausgabe.h"
#include "results/datenbankfehler.h"
#include "results/einfuhr.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <new>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

Meldung meldung(Modellfehler fehler) {
    switch (fehler) {
    case Modellfehler::KeinModell:
        return Meldung::ModellKeines;
    case Modellfehler::AndereFassung:
        return Meldung::ModellAndereFassung;
    case Modellfehler::Beschädigt:
        break;
    }
    return Meldung::ModellBeschädigt;
}

/// The pictures of the call, a file of several page by page.
QStringList seiten(const QStringList& bilder) {
    QStringList alle;
    for (const QString& bild : bilder) {
        const Bildort ort = Bildort::aus(bild);
        const QList<Bildseite> seiten =
            ort.datei == bild ? Bilddatei::seiten(bild) : QList<Bildseite>();
        for (const Bildseite& seite : seiten) {
            alle << Bildort{bild, seite.nummer}.name();
        }
        if (seiten.isEmpty()) {
            alle << bild;
        }
    }
    alle.removeDuplicates(); // as patterns that overlap give
    return alle;
}

/// A name in the folder for each picture that is no picture itself and no other's.
QStringList zeichnungsnamen(const QStringList& bilder, const QString& ordner, const QString& ziel) {
    std::set<QString> vergeben;
    const auto merke = [&vergeben](const QString& pfad) {
        const QFileInfo info(pfad);
        vergeben.insert(info.absoluteFilePath().toCaseFolded());
        vergeben.insert(info.canonicalFilePath().toCaseFolded());
    };
    for (const QString& bild : bilder) {
        merke(Bildort::aus(bild).datei);
    }
    merke(ziel);
    QStringList namen;
    for (const QString& bild : bilder) {
        const Bildort ort = Bildort::aus(bild);
        const QString stamm = QFileInfo(ort.datei).completeBaseName() +
                              (ort.seite > 1 ? u'-' + QString::number(ort.seite) : QString()) +
                              u"-wings"_s;
        QString pfad;
        for (int i = 1; pfad.isEmpty(); ++i) {
            const QString versuch = QDir(ordner).filePath(
                stamm + (i > 1 ? u'-' + QString::number(i) : QString()) + u".png"_s);
            const QFileInfo info(versuch);
            if (!vergeben.contains(info.absoluteFilePath().toCaseFolded()) &&
                (!info.exists() || !vergeben.contains(info.canonicalFilePath().toCaseFolded()))) {
                pfad = versuch;
            }
        }
        merke(pfad);
        namen << pfad;
    }
    return namen;
}

/// Measures pictures; used by several threads at once.
class Bildmessung {
public:
    Bildmessung(const Bildmessbefehl& befehl, std::shared_ptr<const Erkennungsmodell> modell)
        : befehl_(befehl)
        , erkennung_(std::move(modell)) {}

    [[nodiscard]] Bildmessergebnis miss(const QString& bild) const {
        Bildmessergebnis e;
        e.bild = bild;
        try {
            miss(e);
        } catch (const std::bad_alloc&) {
            e = {};
            e.bild = bild;
            e.fehler = Bildfehler{Bildfehler::Art::KeinSpeicher};
        }
        return e;
    }

private:
    void miss(Bildmessergebnis& e) const {
        auto geöffnet = Bilddatei::öffne(e.bild);
        if (const auto* fehler = std::get_if<Bildfehler>(&geöffnet)) {
            e.fehler = *fehler;
            return;
        }
        e.dpi = befehl_.dpi ? befehl_.dpi : bildauflösung(Bildort::aus(e.bild).datei);
        if (!e.dpi) {
            return;
        }
        auto& datei = std::get<Bilddatei>(geöffnet);
        e.größe = datei.größe();
        Bildfehler fehler;
        const QImage* pixel = datei.pixel(&fehler);
        if (pixel == nullptr) {
            e.fehler = fehler;
            return;
        }
        finde(Bildpixel(*pixel), e);
    }

    void finde(const Pixelquelle& pixel, Bildmessergebnis& e) const {
        // Pictures share the threads when there are several at once.
        const int fäden = befehl_.zugleich > 1 ? 1 : 2;
        Suchverlauf verlauf;
        e.funde = erkennung_.finde(pixel, *e.dpi, verlauf, fäden);
        if (e.funde.empty()) {
            e.andere = erkennung_.andereAuflösung(pixel, *e.dpi, verlauf, fäden);
        }
        e.unterGüte = static_cast<int>(std::erase_if(
            e.funde, [this](const Flügelfund& f) { return f.güte < befehl_.mindestgüte; }));
        if (!befehl_.zeichnungen.isEmpty()) {
            e.zeichnung = zeichne(pixel, e.funde);
        }
    }

    [[nodiscard]] QByteArray zeichne(const Pixelquelle& pixel,
                                     const std::vector<Flügelfund>& funde) const {
        const QImage bild =
            fundzeichnung(pixel, funde,
                          {.höchsterFehler = static_cast<float>(befehl_.höchsterFehler),
                           .ersterPunkt = ersterPunkt(befehl_.messart),
                           .letzterPunkt = letzterPunkt(befehl_.messart)});
        QByteArray png;
        QBuffer puffer(&png);
        puffer.open(QIODevice::WriteOnly);
        if (bild.isNull() || !bild.save(&puffer, "PNG")) {
            throw std::bad_alloc();
        }
        return png;
    }

    const Bildmessbefehl& befehl_;
    Flügelerkennung erkennung_;
};

class Messlauf {
public:
    Messlauf(const Bildmessbefehl& befehl, const Batchumgebung& umgebung)
        : befehl_(befehl)
        , umgebung_(umgebung)
        , bilder_(seiten(befehl.bilder)) {}

    Status führeAus() {
        const auto modell = lade();
        if (!modell) {
            return Status::NichtLesbar;
        }
        std::optional<Einfuhr> einfuhr;
        if (!befehl_.datenbank.isEmpty()) {
            if (const Status status = öffneDatenbank(einfuhr); status != Status::Gut) {
                return status;
            }
        }
        miss(modell);
        for (const Bildmessergebnis& ergebnis : ergebnisse_) {
            berichte(ergebnis);
        }
        if (!befehl_.zeichnungen.isEmpty()) {
            schreibeZeichnungen();
        }
        const QByteArray tabelle = messausgabe(ergebnisse_, befehl_);
        if (schreibe(umgebung_, befehl_.ziel, ausgabetext(umgebung_, befehl_.ziel, tabelle)) !=
            Status::Gut) {
            return Status::NichtLesbar;
        }
        if (einfuhr) {
            for (const Bildmessergebnis& ergebnis : ergebnisse_) {
                speichere(ergebnis, *einfuhr);
            }
            if (gespeichert_) {
                sichereTäglich(umgebung_, *einstellungen_, befehl_.datenbank);
            }
        }
        return gut_ ? Status::Gut : Status::NichtLesbar;
    }

private:
    std::shared_ptr<const Erkennungsmodell> lade() const {
        std::optional<QByteArray> bytes;
        if (!befehl_.modell.isEmpty()) {
            bytes = liesOderMelde(umgebung_, befehl_.modell);
            if (!bytes) {
                return {};
            }
        }
        const Modellergebnis gelesen = bytes ? liesErkennungsmodell(*bytes) : eingebautesModell();
        if (const auto* fehler = std::get_if<Modellfehler>(&gelesen)) {
            melde(befehl_.modell, umgebung_.texte(meldung(*fehler)).arg(befehl_.modell));
            return {};
        }
        return std::get<std::shared_ptr<const Erkennungsmodell>>(gelesen);
    }

    Status öffneDatenbank(std::optional<Einfuhr>& einfuhr) {
        einstellungen_ = ladeEinstellungen(umgebung_, befehl_.ini);
        if (!einstellungen_) {
            return Status::NichtLesbar;
        }
        const auto rasse = wähleRasse(umgebung_, *einstellungen_, befehl_.rasse);
        if (!rasse) {
            return Status::FalscherAufruf;
        }
        rasse_ = rasse->position;
        einfuhr.emplace(
            befehl_.datenbank,
            Einfuhrumgebung{
                .satz = {.texte = umgebung_.texte,
                         .format = umgebung_.format,
                         .rassen = rassenliste(*einstellungen_),
                         .OhneHaarlänge = einstellungen_->schalter(Einstellung::OhneHaarlänge)},
                .heute = umgebung_.heute,
                .kurzzeichen = einstellungen_->text(Einstellung::Kurzzeichen),
                .auflösung = befehl_.dpi.value_or(0),
                .rasse = rasse->position,
                .standard = rasse->standard,
                .regeln = ladeUrteilsregeln(*einstellungen_)});
        return Status::Gut;
    }

    void miss(const std::shared_ptr<const Erkennungsmodell>& modell) {
        const Bildmessung messung(befehl_, modell);
        ergebnisse_.resize(static_cast<std::size_t>(bilder_.size()));
        verteile(static_cast<int>(bilder_.size()), befehl_.zugleich, [&](int i) {
            ergebnisse_[static_cast<std::size_t>(i)] = messung.miss(bilder_[i]);
        });
    }

    void melde(const QString& datei, const QString& text) const {
        tarvel::melde(umgebung_, datei, text);
    }

    void berichte(const Bildmessergebnis& e) {
        const Texte& t = umgebung_.texte;
        if (e.fehler) {
            melde(e.bild, text(*e.fehler, e.bild, t).simplified());
            gut_ = false;
            return;
        }
        if (!e.dpi) {
            melde(e.bild, t(Meldung::FundAuflösungFehlt));
            gut_ = false;
            return;
        }
        if (e.unterGüte > 0) {
            melde(e.bild, t(Meldung::FundUnterGüte)
                              .arg(e.unterGüte)
                              .arg(zahltext(befehl_.mindestgüte, umgebung_.format)));
        } else if (e.andere) {
            melde(e.bild, t(Meldung::FundAndereAuflösung).arg(*e.dpi).arg(*e.andere));
        } else if (e.funde.empty()) {
            melde(e.bild, t(Meldung::FundKeiner).arg(*e.dpi));
        }
        for (std::size_t i = 0; i < e.funde.size(); ++i) {
            berichte(e, e.funde[i], static_cast<int>(i) + 1);
        }
    }

    void berichte(const Bildmessergebnis& e, const Flügelfund& fund, int nummer) const {
        const Texte& t = umgebung_.texte;
        if (fund.stand != Flügelfund::Stand::Sicher) {
            melde(e.bild, t(Meldung::FundZweifelhaft)
                              .arg(nummer)
                              .arg(Format(fund.güte, u"0.00", umgebung_.format)));
        }
        QStringList punkte;
        for (int p = ersterPunkt(befehl_.messart); p <= letzterPunkt(befehl_.messart); ++p) {
            const float fehler = fund.vorschlag.fehler[static_cast<std::size_t>(p - 1)];
            if (fehler > befehl_.höchsterFehler) {
                punkte << u"%1 (%2)"_s.arg(QString::number(p),
                                           Format(fehler, u"0.0", umgebung_.format));
            }
        }
        if (!punkte.isEmpty()) {
            melde(
                e.bild,
                t(Meldung::FundPunkteUnsicher).arg(QString::number(nummer), punkte.join(u", "_s)));
        }
    }

    void schreibeZeichnungen() {
        if (!QDir().mkpath(befehl_.zeichnungen)) {
            melde(befehl_.zeichnungen,
                  nichtGeschrieben(umgebung_.texte, befehl_.zeichnungen, {}).simplified());
            gut_ = false;
            return;
        }
        const QStringList namen = zeichnungsnamen(bilder_, befehl_.zeichnungen, befehl_.ziel);
        for (std::size_t i = 0; i < ergebnisse_.size(); ++i) {
            const auto& zeichnung = ergebnisse_[i].zeichnung;
            const QString& pfad = namen[static_cast<qsizetype>(i)];
            if (zeichnung && schreibe(umgebung_, pfad, *zeichnung) != Status::Gut) {
                gut_ = false;
            }
        }
    }

    /// An examination of the picture's wings. Their numbers are those of the table.
    void speichere(const Bildmessergebnis& e, Einfuhr& einfuhr) {
        const Texte& t = umgebung_.texte;
        const auto anzahl = std::ssize(e.funde);
        if (anzahl == 0) {
            return; // said already
        }
        if (anzahl > Messreihe::HöchsteFlügelzahl) {
            melde(e.bild, t(Meldung::FundZuViele).arg(anzahl).arg(Messreihe::HöchsteFlügelzahl));
            gut_ = false;
            return;
        }
        const Bildort ort = Bildort::aus(e.bild);
        Messreihe reihe;
        qint16 nummer = 0;
        for (const Flügelfund& fund : e.funde) {
            Flügelmessung m = messung(fund, e, befehl_.messart);
            m.bilddatei = Bildort{QFileInfo(ort.datei).absoluteFilePath(), ort.seite}.name();
            m.bild.marke = inhaltsmarke(ort.datei);
            reihe.trageEin(++nummer, berechneIndizes(m.punkte, m.messart, m.aufnahme), m,
                           umgebung_.format);
        }
        if (reihe.leer()) {
            melde(e.bild, t(Meldung::FundNichtsZuSpeichern));
            gut_ = false;
            return;
        }
        Kolonieangaben angaben;
        angaben.Rasse = rasse_;
        Untersuchung untersuchung;
        untersuchung.lade(angaben, reihe, {}, {},
                          {.Grenzen = {},
                           .Herkunft = Bildort{QFileInfo(ort.datei).fileName(), ort.seite}.name()});
        const Einfuhrbericht bericht = einfuhr.nimm(untersuchung);
        for (const auto& hinweis : bericht.hinweise) {
            melde(e.bild, hinweis.text);
        }
        if (bericht.nummer.isEmpty()) {
            gut_ = false;
            return;
        }
        gespeichert_ = true;
        melde(e.bild, t(Meldung::UntersuchungGespeichert).arg(bericht.nummer) + u' ' +
                          ungeprüfttext(reihe, t) + u'.');
    }

    const Bildmessbefehl& befehl_;
    const Batchumgebung& umgebung_;
    QStringList bilder_;
    std::vector<Bildmessergebnis> ergebnisse_;
    std::optional<Einstellungen> einstellungen_; ///< where a results file is written
    int rasse_ = 0;
    bool gespeichert_ = false; ///< something came into the results file
    bool gut_ = true;
};

} // namespace

Status missBilder(const Bildmessbefehl& befehl, const Batchumgebung& umgebung) {
    try {
        return Messlauf(befehl, umgebung).führeAus();
    } catch (const Datenbankfehler& fehler) {
        melde(umgebung, befehl.datenbank, meldungstext(umgebung.texte, fehler));
        return Status::NichtLesbar;
    }
}

} // namespace tarvel

#include "app/demo.h"

#include "app/befehlsleiste.h"
#include "app/hauptstart.h"
#include "app/hg.h"
#include "app/info.h"
#include "app/start.h"
#include "measure/aufloesung.h"
#include "measure/bild.h"
#include "measure/messhilfe.h"
#include "measure/uebersicht.h"
#include "platform/system_shell.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextDocumentFragment>
#include <QTextStream>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Musterauflösung = 1200;
constexpr int Musterzoom = 2;

/// Answers in place of a person: chooses the sample where a file is asked for, and takes every
/// message as a fault, because the demo does nothing that a message is needed for.
class Demodialoge final : public Dialoge {
public:
    explicit Demodialoge(QString muster)
        : muster_(std::move(muster)) {}

    void meldung(const QString& /*titel*/, const QString& text, Meldungsart /*art*/) override {
        std::fputs(qPrintable(text + u'\n'), stderr);
        ++meldungen_;
    }
    void bericht(const QString& titel, const QString& text, const QStringList& zeilen) override {
        meldung(titel, text + u'\n' + zeilen.join(u'\n'), Meldungsart::Ausruf);
    }
    Antwort frage(const Frage& /*frage*/) override { return Antwort::Ja; }
    std::optional<int> auswahl(const QString&, const QString&, const QStringList&,
                               int vorgabe) override {
        return vorgabe;
    }
    QString wähleDatei(const QString&, const QString&, const QString&) override {
        return sammlung_.isEmpty() ? muster_ : sammlung_;
    }
    /// The file that is chosen from now on.
    void setzeSammlung(const QString& pfad) { sammlung_ = pfad; }
    QStringList wähleDateien(const QString&, const QString&, const QString&) override {
        return {muster_};
    }
    QString wähleOrdner(const QString&, const QString&) override { return {}; }
    QString wähleZieldatei(const QString&, const QString& vorschlag, const QString&) override {
        return QFileInfo(muster_).dir().filePath(u"protokoll."_s + QFileInfo(vorschlag).suffix());
    }
    [[nodiscard]] int meldungen() const { return meldungen_; }

private:
    QString muster_;
    QString sammlung_;
    int meldungen_ = 0;
};

/// The demo prints into a file only.
class OhneDrucker final : public Druckersystem {
public:
    QStringList liste() override { return {}; }
    QString standard() override { return {}; }
    bool setzeStandard(const QString& /*drucker*/) override { return false; }
    bool drucke(const Druckauftrag& /*auftrag*/, const Seitenmaler& /*maler*/) override {
        return false;
    }
};

void maus(QWidget& ziel, QEvent::Type art, QPointF ort, Qt::MouseButton taste) {
    const bool gedrückt = art != QEvent::MouseButtonRelease && taste != Qt::NoButton;
    QMouseEvent ereignis(art, ort, ziel.mapToGlobal(ort), taste,
                         gedrückt ? Qt::MouseButtons(taste) : Qt::MouseButtons(Qt::NoButton),
                         Qt::NoModifier);
    QCoreApplication::sendEvent(&ziel, &ereignis);
}

void klick(QWidget& ziel, QPointF ort, Qt::MouseButton taste) {
    maus(ziel, QEvent::MouseMove, ort, Qt::NoButton);
    maus(ziel, QEvent::MouseButtonPress, ort, taste);
    maus(ziel, QEvent::MouseButtonRelease, ort, taste);
}

void tippe(QWidget& ziel, const QString& text) {
    for (const QChar zeichen : text) {
        for (const QEvent::Type art : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent ereignis(art, 0, Qt::NoModifier, QString(zeichen));
            QCoreApplication::sendEvent(&ziel, &ereignis);
        }
    }
}

void drückeEingabe(QWidget& ziel) {
    for (const QEvent::Type art : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent ereignis(art, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&ziel, &ereignis);
    }
}

/// True points of the sample, one row a wing: the unused index 0 and points 1 to 8.
using Flügelpunkte = std::array<QPointF, Messpunkte::Anzahl + 1>;

std::vector<Flügelpunkte> wahrePunkte() {
    std::vector<Flügelpunkte> flügel;
    QFile datei(u":/tarvel/musterblatt.csv"_s);
    if (!datei.open(QIODevice::ReadOnly)) {
        return flügel;
    }
    datei.readLine(); // headings
    while (!datei.atEnd()) {
        const QList<QByteArray> zellen = datei.readLine().trimmed().split(',');
        Flügelpunkte punkte;
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            const qsizetype stelle = 2 * i - 1;
            punkte.at(static_cast<std::size_t>(i)) =
                QPointF(zellen.value(stelle).toDouble(), zellen.value(stelle + 1).toDouble());
        }
        flügel.push_back(punkte);
    }
    return flügel;
}

QPointF mitte(const Flügelpunkte& punkte) {
    QPointF summe;
    for (const QPointF& punkt : punkte) {
        summe += punkt;
    }
    return summe / Messpunkte::Anzahl;
}

/// Of a wing's stored points from true ones, in pixels of the sheet: mean and largest.
std::pair<double, double> abstand(const Flügelmessung& flügel, const Flügelpunkte& wahr) {
    double summe = 0;
    double größter = 0;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const auto stelle = static_cast<std::size_t>(i);
        const QPointF klick(flügel.punkte.PunktX.at(stelle), flügel.punkte.PunktY.at(stelle));
        const QPointF d =
            (klick + QPointF(0.5, 0.5)) / flügel.aufnahme.Zoomfaktor - wahr.at(stelle);
        summe += std::hypot(d.x(), d.y());
        größter = std::max(größter, std::hypot(d.x(), d.y()));
    }
    return {summe / Messpunkte::Anzahl, größter};
}

class Vorführung {
public:
    Vorführung(const QString& ziel, const QString& ordner)
        : ziel_(ziel)
        , dialoge_(ziel_.filePath(u"musterblatt.png"_s))
        , speicher_(ordner + u"/benutzer.ini"_s)
        , ordner_(ordner) {}

    int laufe() {
        legeDatenbankAn();
        QFile::remove(ziel_.filePath(u"musterblatt.png"_s));
        QFile::copy(u":/tarvel/musterblatt.png"_s, ziel_.filePath(u"musterblatt.png"_s));
        if (!starte()) {
            return 1;
        }
        halteFest(hg(), u"hauptfenster"_s);
        trageKolonieEin();
        miss();
        trageMerkmaleEin();
        zeigeAnsichten();
        vergleiche();
        löseAus(u"men_Datei_2"_s);
        zeigeProtokoll();
        prüfeNeuenStart();
        zeigeDatenbank();
        missMitVorschlägen();
        return fehler_ == 0 && dialoge_.meldungen() == 0 ? 0 : 1;
    }

private:
    /// The examination goes into a file of its own, never into that of a person.
    void legeDatenbankAn() {
        const QString pfad = ziel_.filePath(u"demo.tdb"_s);
        QFile::remove(pfad);
        NeueDatenbank(pfad);
        if (!speicher_.SaveSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s, pfad)) {
            ++fehler_;
        }
    }

    bool starte() {
        programm_.reset();
        programm_ = std::make_unique<Programm>(
            ordner_, Dienste{.dialoge = dialoge_,
                             .shell = shell_,
                             .speicher = speicher_,
                             .uhr = uhr_,
                             .drucker = drucker_,
                             .format = Zahlenformat::system(),
                             .dokumente = ziel_.path(),
                             .benutzersprache = QLocale::system().language(),
                             .ersterLauf = [this](Start& start) { ersterLauf(start); },
                             .modell = modell_});
        if (!programm_->Hauptstart()) {
            return false;
        }
        hg().setWindowState(Qt::WindowNoState);
        hg().resize(1280, 720);
        zeigeAn();
        return true;
    }

    HG& hg() { return *programm_->hauptfenster(); }

    void trageKolonieEin() {
        for (const auto& [feld, text] : {std::pair{u"txt_LV"_s, u"5"_s},
                                         {u"txt_ZNr"_s, u"12"_s},
                                         {u"txt_KNr"_s, u"34"_s},
                                         {u"txt_Jahr"_s, u"24"_s},
                                         {u"txt_Volk"_s, u"12"_s}}) {
            tippe(kind<QLineEdit>(feld), text);
            drückeEingabe(kind<QLineEdit>(feld));
        }
        tippe(*kind<QComboBox>(u"cbo_Name"_s).lineEdit(), u"Imkerei Muster"_s);
        tippe(*kind<QComboBox>(u"cbo_Besitzer"_s).lineEdit(), u"A. Muster"_s);
        tippe(*kind<QComboBox>(u"cbo_Begattung"_s).lineEdit(), u"Belegstelle"_s);
    }

    template <typename T>
    T& kind(const QString& name) {
        auto* gefunden = hg().findChild<T*>(name);
        if (gefunden == nullptr) {
            qFatal("no control named %s", qPrintable(name));
        }
        return *gefunden;
    }

    void löseAus(const QString& aktion) { kind<QAction>(aktion).trigger(); }

    /// Triggers a command that opens a window, and does something with that as soon as it waits for
    /// an answer. Not before: some systems run timers while they show a window, and one that is
    /// closed then never returns.
    template <typename Tu>
    void mitFenster(QAction& befehl, const Tu& tu) {
        const int vorher = QThread::currentThread()->loopLevel();
        QTimer blick;
        bool da = false;
        QObject::connect(&blick, &QTimer::timeout, &blick, [&] {
            auto* fenster = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (fenster != nullptr && QThread::currentThread()->loopLevel() > vorher) {
                blick.stop();
                da = true;
                tu(*fenster);
            }
        });
        blick.start(0);
        befehl.trigger();
        fehler_ += da ? 0 : 1;
    }

    /// A text that wraps takes a second turn until it has its height.
    static void zeigeAn() {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    void halteFest(QWidget& fenster, const QString& name) {
        zeigeAn();
        const QString pfad = ziel_.filePath(name + u".png"_s);
        if (!fenster.grab().save(pfad)) {
            std::fputs(qPrintable(u"cannot write "_s + pfad + u'\n'), stderr);
            ++fehler_;
        }
    }

    void ersterLauf(Start& start) {
        start.show();
        tippe(*start.findChild<QLineEdit*>(u"txt_Name"_s), u"Imkerei Muster"_s);
        tippe(*start.findChild<QLineEdit*>(u"txt_Kurzzeichen"_s), u"IM"_s);
        halteFest(start, u"erster-lauf"_s);
        start.findChild<QPushButton*>(u"lab_OK"_s)->click();
    }

    void miss() {
        löseAus(u"men_Datei_5"_s);
        auto& auflösung = kind<QComboBox>(u"cbo_dpi"_s);
        auflösung.setCurrentIndex(scannerposition(Musterauflösung));
        Q_EMIT auflösung.activated(auflösung.currentIndex());
        löseAus(u"men_Zoom_%1"_s.arg(Musterzoom));
        löseAus(u"men_Ansicht_6"_s);
        halteFest(hg(), u"uebersicht"_s);
        bool erster = true;
        for (const Flügelpunkte& punkte : wahrePunkte_) {
            messeFlügel(punkte, erster);
            erster = false;
        }
        halteFest(hg(), u"uebersicht-gemessen"_s);
    }

    void messeFlügel(const Flügelpunkte& punkte, bool mitBild) {
        löseAus(u"men_Ansicht_6"_s);
        auto& übersicht = kind<Übersicht>(u"Übersicht"_s);
        const QPointF ort = übersicht.zuFenster(mitte(punkte));
        maus(übersicht, QEvent::MouseButtonPress, übersicht.rect().center(), Qt::LeftButton);
        maus(übersicht, QEvent::MouseMove, ort, Qt::LeftButton);
        maus(übersicht, QEvent::MouseButtonRelease, ort, Qt::LeftButton);
        auto& bild = kind<Bild>(u"Bild"_s);
        for (std::size_t i = 1; i < punkte.size(); ++i) {
            klick(*bild.viewport(), bild.zuFenster(punkte.at(i) * Musterzoom), Qt::LeftButton);
        }
        if (mitBild) {
            halteFest(hg(), u"messen"_s);
        }
        klick(*bild.viewport(), bild.zuFenster(punkte.back() * Musterzoom), Qt::RightButton);
    }

    /// The body marks of eight bees, as a person sets and takes them over.
    void trageMerkmaleEin() {
        löseAus(u"men_Ansicht_2"_s);
        constexpr int Bienen = 8;
        for (int biene = 0; biene < Bienen; ++biene) {
            // One bee in four has small corners and middle hair; one has a half-wide tomentum.
            const int ecken = biene % 4 == 3 ? 1 : 0;
            kind<QAbstractButton>(u"opt_Panzer_A_%1"_s.arg(ecken)).click();
            kind<QAbstractButton>(u"opt_HaarL_%1"_s.arg(ecken)).click();
            kind<QAbstractButton>(u"opt_Filz_%1"_s.arg(biene == 0 ? 1 : 0)).click();
            kind<QAbstractButton>(u"bef_Übernehmen"_s).click();
        }
        halteFest(hg(), u"merkmal"_s);
    }

    void zeigeAnsichten() {
        for (const auto& [befehl, bild] : {std::pair{u"men_Ansicht_0"_s, u"alle"_s},
                                           {u"men_Ansicht_11"_s, u"tabelle"_s},
                                           {u"men_Ansicht_3"_s, u"kurven"_s},
                                           {u"men_Ansicht_4"_s, u"korrel"_s}}) {
            löseAus(befehl);
            halteFest(hg(), bild);
        }
        zeigeMängel();
        löseAus(u"men_Hilfe_4"_s);
        halteFest(kind<MessHilfe>(u"MessHilfe"_s), u"messhilfe"_s);
        Info info(programm_->texte());
        info.show();
        halteFest(info, u"info"_s);
    }

    /// What the verdict says of a sample that misses a standard: one yellow ring, which no race in
    /// the list allows.
    void zeigeMängel() {
        löseAus(u"men_Ansicht_2"_s);
        kind<QAbstractButton>(u"opt_Panzer_A_2"_s).click();
        kind<QAbstractButton>(u"bef_Übernehmen"_s).click();
        halteFest(hg(), u"urteil"_s);
        QTextStream(stdout) << umfang().urteil << u'\n';
        auto& liste = kind<QListView>(u"Liste"_s);
        liste.setCurrentIndex(liste.model()->index(liste.model()->rowCount() - 1, 0));
        kind<QAbstractButton>(u"bef_Entfernen"_s).click();
    }

    /// Prints the lines of the series, and beside them whether they are those of the true points.
    void vergleiche() {
        QTextStream aus(stdout);
        const Messreihe& gemessen = hg().untersuchung().reihe();
        Messreihe wahr;
        qint16 nummer = 0;
        for (const Flügelpunkte& punkte : wahrePunkte_) {
            Messpunkte p(Messart::AlleMessungen);
            for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
                const QPointF& ort = punkte.at(static_cast<std::size_t>(i));
                p.setze(Messart::AlleMessungen, i, static_cast<float>(ort.x()),
                        static_cast<float>(ort.y()));
            }
            const Aufnahme aufnahme{.Zoomfaktor = 1, .dpi = Musterauflösung};
            wahr.trageEin(++nummer, berechneIndizes(p, Messart::AlleMessungen, aufnahme), {},
                          Zahlenformat::system());
        }
        const Zeilenwörter wörter = zeilenwörter(programm_->texte());
        const QStringList ci = gemessen.ciTexte(wörter);
        const QStringList hiDv = gemessen.hiDvTexte(wörter);
        const QStringList ciWahr = wahr.ciTexte(wörter);
        const QStringList hiDvWahr = wahr.hiDvTexte(wörter);
        int gleich = 0;
        for (qsizetype i = 0; i < ciWahr.size(); ++i) {
            const bool stimmt = ci.value(i) == ciWahr.at(i) && hiDv.value(i) == hiDvWahr.at(i);
            gleich += stimmt ? 1 : 0;
            aus << ci.value(i) << u"   |   "_s << hiDv.value(i)
                << (stimmt ? u"   = true points\n"_s
                           : u"   DIFFERS: "_s + ciWahr.at(i) + u' ' + hiDvWahr.at(i) + u'\n');
        }
        aus << gleich << u" of "_s << ciWahr.size()
            << u" wings agree with their true points. Pictures are in "_s << ziel_.path() << u'\n';
        const Umfang stand = umfang();
        aus << stand.merkmale.join(u'\n') << u'\n' << stand.urteil << u'\n';
        if (gleich != ciWahr.size() || gleich == 0 || ci.size() != ciWahr.size()) {
            ++fehler_;
        }
    }

    /// Measures the sheet once more, by a take-over of the proposed points for each wing, and
    /// prints how far they are from the true ones.
    void missMitVorschlägen() {
        hg().close();
        modell_ = eingebautesModell;
        if (!starte()) {
            ++fehler_;
            return;
        }
        löseAus(u"men_Datei_0"_s);
        löseAus(u"men_Datei_5"_s);
        löseAus(u"men_Zoom_%1"_s.arg(Musterzoom));
        const Messreihe& reihe = hg().untersuchung().reihe();
        const auto alle = static_cast<int>(wahrePunkte_.size());
        const QDeadlineTimer frist(std::chrono::seconds(60));
        while (reihe.letzteNummer() < alle && !frist.hasExpired()) {
            // In vain while the wings are looked for.
            löseAus(u"men_Bearbeiten_%1"_s.arg(BearbeitenVorschlagen));
            zeigeAn();
            if (reihe.leer()) {
                halteFest(hg(), u"vorschlag"_s);
            }
            drückeEingabe(kind<Bild>(u"Bild"_s));
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        double summe = 0;
        double größter = 0;
        for (int nummer = 1; nummer <= reihe.letzteNummer(); ++nummer) {
            std::pair nächster{1e9, 1e9};
            for (const Flügelpunkte& wahr : wahrePunkte_) {
                nächster = std::min(nächster, abstand(*reihe.messung(nummer), wahr));
            }
            summe += nächster.first;
            größter = std::max(größter, nächster.second);
        }
        QTextStream(stdout) << u"By proposals: "_s << reihe.letzteNummer() << u" of "_s << alle
                            << u" wings measured; their points are "_s
                            << QString::number(summe / std::max<int>(reihe.letzteNummer(), 1), 'f',
                                               1)
                            << u" px from the true ones on average, the worst "_s
                            << QString::number(größter, 'f', 1) << u" px, at "_s << Musterauflösung
                            << u" dpi. The sheet is drawn: this says nothing of real wings.\n"_s;
        fehler_ += reihe.letzteNummer() == alle ? 0 : 1;
    }

    /// What a person sees of an examination.
    struct Umfang {
        Kolonieangaben angaben;
        QStringList zeilen;
        QStringList merkmale;
        QString urteil;

        bool operator==(const Umfang&) const = default;
    };
    Umfang umfang() {
        const Untersuchung& u = hg().untersuchung();
        const Zeilenwörter wörter = zeilenwörter(programm_->texte());
        QString urteil = kind<QLabel>(u"lab_Urteil"_s).text();
        if (const QString mängel = kind<QLabel>(u"lab_Mängel"_s).text(); !mängel.isEmpty()) {
            urteil += u'\n' + QTextDocumentFragment::fromHtml(mängel).toPlainText();
        }
        return {.angaben = u.angaben(),
                .zeilen = u.reihe().ciTexte(wörter) + u.reihe().hiDvTexte(wörter),
                .merkmale = MerkmaleAuswerten(u.merkmale(), false).Texte,
                .urteil = urteil};
    }

    /// Both pages of the report as previews, and the report as a PDF file.
    void zeigeProtokoll() {
        QFile::remove(ziel_.filePath(u"protokoll.pdf"_s));
        for (const auto& [befehl, bild] :
             {std::pair{u"men_Datei_9"_s, u"vorschau-1"_s}, {u"men_Datei_10"_s, u"vorschau-2"_s}}) {
            löseAus(befehl);
            halteFest(hg(), bild);
        }
        mitFenster(kind<QAction>(u"men_Datei_8"_s), [this](QDialog& drucken) {
            halteFest(drucken, u"drucken"_s);
            drucken.findChild<QPushButton*>(u"bef_PDF"_s)->click();
        });
        fehler_ += QFile::exists(ziel_.filePath(u"protokoll.pdf"_s)) ? 0 : 1;
    }

    /// Ends the program, starts it anew and finds the examination as it was.
    void prüfeNeuenStart() {
        const Umfang vorher = umfang();
        hg().close();
        const bool gleich = starte() && umfang() == vorher;
        fehler_ += gleich ? 0 : 1;
        QTextStream(stdout) << u"After a new start the examination "_s << vorher.angaben.UNr
                            << (gleich ? u" is the same.\n"_s : u" DIFFERS.\n"_s);
        halteFest(hg(), u"wieder-geladen"_s);
    }

    /// The list of examinations, and one of them opened by its button.
    void zeigeDatenbank() {
        mitFenster(kind<QAction>(u"men_Datei_1"_s), [this](QDialog& db) {
            db.resize(1000, 480);
            halteFest(db, u"datenbank"_s);
            zeigeSammlung(db);
            db.findChild<QPushButton*>(u"bef_Öffnen"_s)->click();
        });
    }

    /// What another collection would bring, and what lies in the bin.
    void zeigeSammlung(QDialog& db) {
        const QString pfad = ziel_.filePath(u"anna.tdb"_s);
        QFile::remove(pfad);
        NeueDatenbank(pfad);
        Ergebnistabelle andere(pfad);
        Ergebnistabelle eigene(ziel_.filePath(u"demo.tdb"_s));
        Ergebnissatz satz = eigene.lade(eigene.letzteNummer().value_or(QString())).value();
        const QString nummer = satz.U_NR;
        satz.Z_NAME = u"Anna Muster"_s;
        satz.ZB_NR = u"12-34-57"_s;
        andere.speichere(satz);
        for (const QString& weitere : {u"021"_s, u"022"_s, u"023"_s}) {
            satz.U_NR = weitere + nummer.mid(3);
            andere.speichere(satz);
            eigene.speichere(satz);
        }
        const auto zeilen = [&] {
            return eigene.zeilen(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}, 9);
        };
        eigene.lösche(zeilen().at(3));
        eigene.lösche(zeilen().at(2));
        auto geändert = zeilen().at(1);
        geändert.werte.at(2) = u"Anna Mustermann"_s;
        eigene.ändere(zeilen().at(1), geändert);
        dialoge_.setzeSammlung(pfad);
        for (const auto& [befehl, bild] : {std::pair(u"men_Tabelle_9"_s, u"zusammenfuehren"_s),
                                           {u"men_Tabelle_8"_s, u"papierkorb"_s}}) {
            mitFenster(*db.findChild<QAction*>(befehl), [this, name = bild](QDialog& fenster) {
                fenster.resize(940, 440);
                halteFest(fenster, name);
                fenster.reject();
            });
        }
        dialoge_.setzeSammlung({});
    }

    QDir ziel_;
    Demodialoge dialoge_;
    SystemShell shell_;
    Benutzerspeicher speicher_;
    SystemClock uhr_;
    OhneDrucker drucker_;
    QString ordner_;
    std::unique_ptr<Programm> programm_;
    std::vector<Flügelpunkte> wahrePunkte_ = wahrePunkte();
    std::function<Modellergebnis()> modell_; ///< nothing is looked for before there is one
    int fehler_ = 0;
};

} // namespace

int demo(const Befehlszeile& zeile) {
    if (!QDir().mkpath(zeile.demo)) {
        std::fputs(qPrintable(u"tarvel: cannot make the folder "_s + zeile.demo + u'\n'), stderr);
        return 1;
    }
    // What it leaves takes the place of files of these names.
    if (const QDir ziel(zeile.demo); !ziel.isEmpty() && !ziel.exists(u"demo.tdb"_s)) {
        std::fputs(qPrintable(u"tarvel: the folder "_s + zeile.demo +
                              u" holds files that are not of a demo\n"_s),
                   stderr);
        return 1;
    }
    // A person's own settings stay out of it.
    const QTemporaryDir eigener;
    Vorführung vorführung(zeile.demo, zeile.ordner.isEmpty() ? eigener.path() : zeile.ordner);
    return vorführung.laufe();
}

} // namespace tarvel

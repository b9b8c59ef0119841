#include "app/befehlszeile.h"
#include "app/demo.h"
#include "app/hauptstart.h"
#include "app/hg.h"
#include "app/start.h"
#include "app/symbol.h"
#include "platform/prozess.h"
#include "platform/system_dialoge.h"
#include "platform/system_shell.h"
#include "print/systemdrucker.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QStandardPaths>
#include <QTimer>

#include <cstdio>

namespace {

using namespace tarvel;
using namespace Qt::StringLiterals;

constexpr int FalscherAufruf = 2;

/// Ends what is running as soon as a first window was painted, or, where a picture is to be
/// loaded, as soon as the picture was.
class EndeNachErstemAnstrich : public QObject {
public:
    explicit EndeNachErstemAnstrich(bool mitBild)
        : mitBild_(mitBild) {}

    [[nodiscard]] bool gemalt() const { return gemalt_; }

    bool eventFilter(QObject* objekt, QEvent* event) override {
        const bool gemeint = !mitBild_ || qobject_cast<QDialog*>(objekt) != nullptr ||
                             objekt->objectName() == u"Übersicht"_s ||
                             objekt->objectName() == u"Bild"_s;
        if (!gemalt_ && event->type() == QEvent::Paint && objekt->isWidgetType() && gemeint) {
            gemalt_ = true;
            QTimer::singleShot(0, this, [] {
                if (QWidget* modal = QApplication::activeModalWidget()) {
                    modal->close();
                }
                // Without closing the window, which would ask and write what a person's closing
                // does.
                QCoreApplication::exit();
            });
        }
        return false;
    }

private:
    bool mitBild_;
    bool gemalt_ = false;
};

void drucke(std::FILE* ziel, const QString& text) {
    std::fputs(qPrintable(text), ziel);
}

int laufe(QApplication& app, const Befehlszeile& zeile) {
    const QString ordner =
        zeile.ordner.isEmpty() ? QCoreApplication::applicationDirPath() : zeile.ordner;
    QDir().mkpath(ordner);

    EndeNachErstemAnstrich ende(!zeile.dateien.isEmpty());
    if (zeile.nurStart) {
        app.installEventFilter(&ende);
    }
    SystemDialoge dialoge;
    SystemShell shell;
    Benutzerspeicher speicher;
    const SystemClock uhr;
    // The printers come before the program, so they have words of their own that follow its
    // language.
    Texte druckerworte(ordner);
    const std::unique_ptr<Druckersystem> drucker = systemdrucker(dialoge, druckerworte);
    Programm programm(
        ordner, {.dialoge = dialoge,
                 .shell = shell,
                 .speicher = speicher,
                 .uhr = uhr,
                 .drucker = *drucker,
                 .format = Zahlenformat::system(),
                 .dokumente = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                 .benutzersprache = QLocale::system().language(),
                 .ersterLauf =
                     [](Start& start) {
                         QApplication::setWindowIcon(programmsymbol());
                         start.exec();
                     },
                 .modell = eingebautesModell});
    const auto worte = [&] {
        const Texte& t = programm.texte();
        druckerworte.SpracheEinstellen(static_cast<int>(t.sprache().value_or(Sprache::Deutsch)));
        dialoge.setzeWorte({.ok = t(Meldung::KnopfOK),
                            .ja = t(Text::Ja),
                            .nein = t(Text::Nein),
                            .abbrechen = t(Text::Abbrechen)});
    };
    worte();
    QObject::connect(&programm.texte(), &Texte::languageChanged, &app, worte);
    if (!programm.Hauptstart(zeile.nurStart ? QStringList() : zeile.dateien)) {
        return 0;
    }
    if (ende.gemalt()) {
        return 0; // the first-run window was the first
    }
    if (!zeile.dateien.isEmpty()) {
        // From the event loop, so that the window is up while a large scan is read.
        QTimer::singleShot(0, programm.hauptfenster(),
                           [&] { programm.hauptfenster()->öffneDateien(zeile.dateien); });
    }
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    richteProzessEin();
    const auto ergebnis = leseBefehlszeile(aufrufargumente(argc, argv), QDir::currentPath());
    const auto* gelesen = std::get_if<Befehlszeile>(&ergebnis);
    if (gelesen == nullptr) {
        drucke(stderr, u"tarvel: "_s + std::get_if<Befehlszeilenfehler>(&ergebnis)->text + u'\n');
        return FalscherAufruf;
    }
    const Befehlszeile& zeile = *gelesen;
    if (zeile.hilfe) {
        drucke(stdout, befehlszeilenhilfe());
        return 0;
    }
    if (zeile.version) {
        drucke(stdout, u"tarvel " TARVEL_VERSION "\n"_s);
        return 0;
    }
    if (!zeile.demo.isEmpty() && ohneAnzeige()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"Tarvel"_s);
    QApplication::setApplicationVersion(QStringLiteral(TARVEL_VERSION));
    QGuiApplication::setDesktopFileName(u"tarvel"_s);
    return zeile.demo.isEmpty() ? laufe(app, zeile) : demo(zeile);
}

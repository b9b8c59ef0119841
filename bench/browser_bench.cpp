// The browser of a results file as a process of its own: shows it and ends after its first rows
// were painted.

#include "results/db.h"

#include <QApplication>
#include <QTableView>

namespace {

using namespace tarvel;
using namespace Qt::StringLiterals;

/// Nobody is asked anything here.
class KeineDialoge final : public Dialoge {
public:
    void meldung(const QString& /*titel*/, const QString& text, Meldungsart /*art*/) override {
        qFatal("%s", qPrintable(text));
    }
    void bericht(const QString& /*titel*/, const QString& text, const QStringList&) override {
        qFatal("%s", qPrintable(text));
    }
    Antwort frage(const Frage& /*frage*/) override { return Antwort::Nein; }
    std::optional<int> auswahl(const QString&, const QString&, const QStringList&, int) override {
        return std::nullopt;
    }
    QString wähleDatei(const QString&, const QString&, const QString&) override { return {}; }
    QStringList wähleDateien(const QString&, const QString&, const QString&) override { return {}; }
    QString wähleOrdner(const QString&, const QString&) override { return {}; }
    QString wähleZieldatei(const QString&, const QString&, const QString&) override { return {}; }
};

class EndeNachErstenZeilen : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* /*gitter*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            // Before what the browser has left for the time after the first rows.
            QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
        }
        return false;
    }
    bool event(QEvent* event) override {
        if (event->type() == QEvent::User) {
            QCoreApplication::removePostedEvents(nullptr, QEvent::MetaCall);
            QCoreApplication::exit();
        }
        return QObject::event(event);
    }
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc != 2) {
        qFatal("usage: browser_bench FILE");
    }
    Texte texte{QString()};
    texte.SpracheEnglisch();
    KeineDialoge dialoge;
    DB db({.texte = texte,
           .dialoge = dialoge,
           .DatenbankPfad = QString::fromLocal8Bit(argv[1]),
           .dokumente = {},
           .DatenbankWählen = [](const QString&) { return false; },
           .LadenDB = [](const QString&) { return false; }});
    EndeNachErstenZeilen ende;
    db.findChild<QTableView*>(u"Grid"_s)->viewport()->installEventFilter(&ende);
    db.show();
    return QApplication::exec();
}

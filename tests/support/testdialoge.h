#pragma once

#include "platform/dialoge.h"
#include "platform/shell.h"
#include "platform/uhr.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

namespace tarvel {

/// Answers questions from a list and records everything that was said; never blocks.
class TestDialoge final : public Dialoge {
public:
    std::deque<Antwort> antworten;  ///< taken in order; Nein when there is none left
    QStringList dateien;            ///< answers to file choosers, in order
    QStringList meldungen;          ///< "title: text" of every message
    std::vector<Meldungsart> arten; ///< pictures beside the messages
    std::vector<Frage> fragen;
    std::function<void()> beiFrage; ///< what happens while the user reads a question
    QStringList filter;
    QStringList auswahlen;   ///< "text: preset" of every choice
    std::optional<int> wahl; ///< answer to every choice: the preset without one, -1 to cancel

    void meldung(const QString& titel, const QString& text, Meldungsart art) override {
        arten.push_back(art);
        meldungen << titel + QStringLiteral(": ") + text;
    }
    void bericht(const QString& titel, const QString& text, const QStringList& zeilen) override {
        meldung(titel, text + u'\n' + zeilen.join(u'\n'), Meldungsart::Ausruf);
    }
    std::optional<int> auswahl(const QString&, const QString& text, const QStringList&,
                               int vorgabe) override {
        auswahlen << text + QStringLiteral(": ") + QString::number(vorgabe);
        return wahl.value_or(vorgabe) < 0 ? std::nullopt : std::optional(wahl.value_or(vorgabe));
    }
    Antwort frage(const Frage& frage) override {
        fragen.push_back(frage);
        if (beiFrage) {
            beiFrage();
        }
        if (antworten.empty()) {
            return Antwort::Nein;
        }
        const Antwort antwort = antworten.front();
        antworten.pop_front();
        return antwort;
    }
    QString wähleDatei(const QString&, const QString&, const QString& muster) override {
        filter << muster;
        return dateien.isEmpty() ? QString() : dateien.takeFirst();
    }
    /// All that are left.
    QStringList wähleDateien(const QString&, const QString&, const QString& muster) override {
        filter << muster;
        return std::exchange(dateien, {});
    }
    QString wähleOrdner(const QString&, const QString&) override {
        return dateien.isEmpty() ? QString() : dateien.takeFirst();
    }
    QString wähleZieldatei(const QString&, const QString&, const QString& muster) override {
        filter << muster;
        return dateien.isEmpty() ? QString() : dateien.takeFirst();
    }
};

/// Records what would have been opened or started.
class TestShell final : public Shell {
public:
    QStringList geöffnet;
    QStringList gestartet;
    bool gelingt = true;

    bool openDocument(const QString& path) override {
        geöffnet << path;
        return gelingt;
    }
    bool runProgram(const QString& program, const QString& document) override {
        gestartet << program + QStringLiteral(" ") + document;
        return gelingt;
    }
};

/// A clock that stands.
class TestClock final : public Clock {
public:
    QDateTime zeit = QDateTime(QDate(2025, 6, 15), QTime(12, 0));
    QDateTime now() const override { return zeit; }
};

} // namespace tarvel

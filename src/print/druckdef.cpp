#include "print/druckdef.h"

#include <QByteArray>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <vector>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint32_t Verbraucherfamilie = 1;
constexpr std::uint32_t Vollzugriff = 0xF000C;
constexpr std::uint32_t Satzart = 5;
constexpr std::uint32_t Standardattribut = 4;
constexpr qsizetype Namenslänge = 512;
constexpr std::uint32_t Eintragslänge = 1024;
constexpr std::uint32_t Listenlänge = 4096;
constexpr std::uint32_t LängsteListe = 1 << 20;
constexpr std::uintptr_t AlleFenster = 0xFFFF;
constexpr std::uint32_t EinstellungGeändert = 26;

constexpr auto Anschlüsse = "PrinterPorts";
constexpr auto Windows = "windows";

/// A name out of the system's record, which may have none.
QByteArray namensfeld(const char* text) {
    return text == nullptr ? QByteArray()
                           : QByteArray(text, qsizetype(qstrnlen(text, Namenslänge)));
}

/// The level-5 record together with the memory its names lie in.
struct Satzpuffer {
    std::vector<std::uint32_t> speicher;
    Druckersatz5 satz;
};

std::optional<Satzpuffer> leseSatz(Druckertabelle& tabelle, Druckertabelle::Handle drucker) {
    std::uint32_t bytes = 0;
    tabelle.GetPrinterA(drucker, Satzart, nullptr, 0, bytes);
    Satzpuffer puffer{std::vector<std::uint32_t>((bytes + 3) / 4), {}};
    const auto größe = std::uint32_t(puffer.speicher.size() * sizeof(std::uint32_t));
    auto* anfang = reinterpret_cast<unsigned char*>(puffer.speicher.data());
    if (größe < sizeof(Druckersatz5) ||
        !tabelle.GetPrinterA(drucker, Satzart, anfang, größe, bytes)) {
        return std::nullopt;
    }
    std::memcpy(&puffer.satz, anfang, sizeof(Druckersatz5));
    return puffer;
}

} // namespace

void DruckDef::DruckerListeFüllen(QStringList& liste) const {
    QByteArray namen;
    std::uint32_t länge = 0;
    for (std::uint32_t größe = Listenlänge; größe <= LängsteListe; größe *= 2) {
        namen.resize(größe);
        länge = tabelle_.GetProfileStringA(Anschlüsse, nullptr, "", namen.data(), größe);
        if (länge < größe - 2) {
            break;
        }
    }
    namen.truncate(länge);

    liste.clear();
    for (const QByteArray& name : namen.split('\0')) {
        const QString drucker = QString::fromLocal8Bit(name).trimmed();
        if (!drucker.isEmpty()) {
            liste << drucker;
        }
    }
}

bool DruckDef::StandardDruckerSetzen(const QString& drucker) {
    Versionsangabe version;
    tabelle_.GetVersionExA(version);
    return version.platformId == Verbraucherfamilie ? setzeAttribut(drucker) : setzeProfil(drucker);
}

void DruckDef::DruckerObjektWählen(const QString& drucker) {
    if (sammlung_.gerätenamen().contains(drucker)) {
        sammlung_.wähle(drucker);
    }
}

QString DruckDef::standarddrucker() const {
    return QString::fromLocal8Bit(profiltext(Windows, "Device").split(',').first());
}

bool DruckDef::setzeAttribut(const QString& drucker) {
    Druckertabelle::Handle handle = nullptr;
    if (!tabelle_.OpenPrinterA(drucker.toLocal8Bit().constData(), handle, Vollzugriff)) {
        return false;
    }
    const auto schließen = qScopeGuard([this, handle] { tabelle_.ClosePrinter(handle); });

    std::optional<Satzpuffer> puffer = leseSatz(tabelle_, handle);
    if (!puffer) {
        return false;
    }
    QByteArray name = namensfeld(puffer->satz.printerName);
    QByteArray anschluss = namensfeld(puffer->satz.portName);
    puffer->satz.printerName = name.data();
    puffer->satz.portName = anschluss.data();
    puffer->satz.attributes = Standardattribut;
    if (!tabelle_.SetPrinterA(handle, Satzart, puffer->satz)) {
        const std::uint32_t fehler = tabelle_.GetLastError();
        dialoge_.meldung(texte_(Meldung::Programmname),
                         u"SetPrinter Failed. Error code: "_s + QString::number(fehler),
                         Meldungsart::Schlicht);
        return false;
    }
    wechsleObjekt(drucker);
    return true;
}

bool DruckDef::setzeProfil(const QString& drucker) {
    const QByteArray name = drucker.toLocal8Bit();
    const QList<QByteArray> teile = profiltext(Anschlüsse, name.constData()).split(',');
    if (teile.size() < 2 || teile[0].isEmpty() || teile[1].isEmpty()) {
        return false;
    }
    const QByteArray gerät = name + ',' + teile[0] + ',' + teile[1];
    const bool geschrieben = tabelle_.WriteProfileStringA(Windows, "Device", gerät.constData());
    tabelle_.SendMessageA(AlleFenster, EinstellungGeändert, 0, Windows);
    wechsleObjekt(drucker);
    return geschrieben;
}

void DruckDef::wechsleObjekt(const QString& drucker) {
    if (sammlung_.aktueller() != drucker) {
        DruckerObjektWählen(drucker);
    }
}

QByteArray DruckDef::profiltext(const char* section, const char* key) const {
    std::array<char, Eintragslänge> puffer{};
    const std::uint32_t länge =
        tabelle_.GetProfileStringA(section, key, "", puffer.data(), Eintragslänge);
    return {puffer.data(), qsizetype(std::min(länge, Eintragslänge - 1))};
}

} // namespace tarvel

#include "platform/cupsdrucker.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLibrary>

#include <algorithm>
#include <atomic>
#include <memory>
#include <span>

#include <cups/cups.h>
#include <cups/http.h>

namespace tarvel {
namespace {

/// The calls of the printing system. It brings twenty libraries along, which would take a sixth of
/// the start, so it is loaded when somebody asks for a printer.
struct Cups {
    QLibrary bibliothek{QStringLiteral("cups"), 2};
    bool da = true;

    template <typename Aufruf>
    Aufruf hole(const char* name) {
        const auto gefunden = reinterpret_cast<Aufruf>(bibliothek.resolve(name));
        da = da && gefunden != nullptr;
        return gefunden;
    }
// NOLINTNEXTLINE(bugprone-macro-parentheses): a declared name takes no parentheses
#define TARVEL_CUPS(aufruf) decltype(&::aufruf) aufruf = hole<decltype(&::aufruf)>(#aufruf)
    TARVEL_CUPS(cupsGetDests2);
    TARVEL_CUPS(cupsFreeDests);
    TARVEL_CUPS(cupsSetDests2);
    TARVEL_CUPS(cupsGetNamedDest);
    TARVEL_CUPS(cupsAddOption);
    TARVEL_CUPS(cupsFreeOptions);
    TARVEL_CUPS(cupsDoRequest);
    TARVEL_CUPS(cupsPrintFile2);
    TARVEL_CUPS(ippNewRequest);
    TARVEL_CUPS(ippDelete);
    TARVEL_CUPS(ippFindAttribute);
    TARVEL_CUPS(ippGetString);
    TARVEL_CUPS(cupsServer);
    TARVEL_CUPS(cupsEncryption);
    TARVEL_CUPS(ippPort);
    TARVEL_CUPS(httpConnect2);
    TARVEL_CUPS(httpSetTimeout);
    TARVEL_CUPS(httpClose);
    TARVEL_CUPS(cupsLastError);
#undef TARVEL_CUPS
};

const Cups& cups() {
    static const Cups einmal;
    return einmal;
}

std::atomic<int> frist = 3000;

/// A connection that does not wait for ever: the library's own would, for a minute.
class Verbindung {
public:
    /// @p geduld milliseconds that an answer may take.
    explicit Verbindung(int geduld = frist) {
        if (cups().da) {
            http_ = cups().httpConnect2(cups().cupsServer(), cups().ippPort(), nullptr, AF_UNSPEC,
                                        cups().cupsEncryption(), 1, frist, nullptr);
        }
        if (http_ != nullptr) {
            cups().httpSetTimeout(
                http_, geduld / 1000.0, [](http_t* /*http*/, void* /*nichts*/) { return 0; },
                nullptr);
        }
    }
    ~Verbindung() {
        if (http_ != nullptr) {
            cups().httpClose(http_);
        }
    }
    Verbindung(const Verbindung&) = delete;
    Verbindung& operator=(const Verbindung&) = delete;

    [[nodiscard]] http_t* http() const { return http_; }

private:
    http_t* http_ = nullptr;
};

/// All printers the server tells of.
class Ziele {
public:
    explicit Ziele(int geduld = frist)
        : verbindung_(geduld)
        , anzahl_(verbindung_.http() != nullptr ? cups().cupsGetDests2(verbindung_.http(), &ziele_)
                                                : 0) {}
    ~Ziele() {
        if (ziele_ != nullptr) {
            cups().cupsFreeDests(anzahl_, ziele_);
        }
    }
    Ziele(const Ziele&) = delete;
    Ziele& operator=(const Ziele&) = delete;

    [[nodiscard]] std::span<cups_dest_t> alle() const {
        return {ziele_, static_cast<std::size_t>(anzahl_)};
    }

    [[nodiscard]] static QString name(const cups_dest_t& ziel) {
        const QString warteschlange = QString::fromUtf8(ziel.name);
        return ziel.instance == nullptr
                   ? warteschlange
                   : warteschlange + QLatin1Char('/') + QString::fromUtf8(ziel.instance);
    }

    [[nodiscard]] cups_dest_t* finde(const QString& gesucht) const {
        const auto ziel = std::ranges::find(alle(), gesucht, &Ziele::name);
        return ziel == alle().end() ? nullptr : &*ziel;
    }

    [[nodiscard]] bool speichere() const {
        return verbindung_.http() != nullptr &&
               cups().cupsSetDests2(verbindung_.http(), anzahl_, ziele_) == 0;
    }
    [[nodiscard]] http_t* http() const { return verbindung_.http(); }

private:
    Verbindung verbindung_;
    cups_dest_t* ziele_ = nullptr;
    int anzahl_;
};

class Optionen {
public:
    explicit Optionen(const cups_dest_t& ziel) {
        for (const cups_option_t& option :
             std::span(ziel.options, static_cast<std::size_t>(ziel.num_options))) {
            setze(option.name, option.value);
        }
    }
    ~Optionen() { cups().cupsFreeOptions(anzahl_, optionen_); }
    Optionen(const Optionen&) = delete;
    Optionen& operator=(const Optionen&) = delete;

    void setze(const char* name, const char* wert) {
        anzahl_ = cups().cupsAddOption(name, wert, anzahl_, &optionen_);
    }
    [[nodiscard]] int anzahl() const { return anzahl_; }
    [[nodiscard]] cups_option_t* optionen() const { return optionen_; }

private:
    int anzahl_ = 0;
    cups_option_t* optionen_ = nullptr;
};

/// The default of the server, whatever the person chose.
QString serverstandard(http_t* http) {
    const std::unique_ptr<ipp_t, decltype(&::ippDelete)> antwort(
        cups().cupsDoRequest(http, cups().ippNewRequest(IPP_OP_CUPS_GET_DEFAULT), "/"),
        cups().ippDelete);
    ipp_attribute_t* name = cups().ippFindAttribute(antwort.get(), "printer-name", IPP_TAG_NAME);
    return name == nullptr ? QString() : QString::fromUtf8(cups().ippGetString(name, 0, nullptr));
}

} // namespace

void setzeCupsFrist(int neue) {
    frist = neue;
}

bool cupsAntwortet() {
    QElapsedTimer uhr;
    uhr.start();
    const Verbindung verbindung;
    if (verbindung.http() == nullptr) {
        return uhr.elapsed() < frist / 2; // refused, so nobody is there who could be silent
    }
    (void)serverstandard(verbindung.http());
    const ipp_status_t stand = cups().cupsLastError();
    return stand != IPP_STATUS_ERROR_INTERNAL && stand != IPP_STATUS_ERROR_SERVICE_UNAVAILABLE;
}

QStringList cupsDrucker() {
    const Ziele ziele;
    QStringList namen;
    for (const cups_dest_t& ziel : ziele.alle()) {
        namen << Ziele::name(ziel);
    }
    return namen;
}

QString cupsStandarddrucker() {
    const Verbindung verbindung;
    if (verbindung.http() == nullptr) {
        return {};
    }
    const std::unique_ptr<cups_dest_t, void (*)(cups_dest_t*)> ziel(
        cups().cupsGetNamedDest(verbindung.http(), nullptr, nullptr),
        [](cups_dest_t* eines) { cups().cupsFreeDests(1, eines); });
    return ziel ? Ziele::name(*ziel) : QString();
}

bool setzeCupsStandarddrucker(const QString& name) {
    const Ziele ziele;
    cups_dest_t* gewählt = ziele.finde(name);
    if (gewählt == nullptr && !name.isEmpty()) {
        return false;
    }
    for (cups_dest_t& ziel : ziele.alle()) {
        ziel.is_default = 0;
    }
    if (gewählt != nullptr && name != serverstandard(ziele.http())) {
        gewählt->is_default = 1;
    }
    return ziele.speichere();
}

bool sendeAnCups(const QString& drucker, const QString& datei, const QString& titel,
                 int exemplare) {
    // A busy server takes a job slowly. Given up too early it would be printed twice.
    constexpr int GeduldFürAuftrag = 60'000;
    const Ziele ziele(GeduldFürAuftrag);
    const cups_dest_t* ziel = ziele.finde(drucker);
    if (ziel == nullptr) {
        return false;
    }
    Optionen optionen(*ziel);
    optionen.setze("copies", QByteArray::number(std::max(exemplare, 1)).constData());
    optionen.setze("media", "A4");
    return cups().cupsPrintFile2(ziele.http(), ziel->name, QFile::encodeName(datei).constData(),
                                 titel.toUtf8().constData(), optionen.anzahl(),
                                 optionen.optionen()) != 0;
}

} // namespace tarvel

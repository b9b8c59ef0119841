// The printers of this Windows, through its own calls. Without any there is nothing to try.

#include "print/druckdef.h"
#include "print/windows_druckersystem.h"
#include "support/testdialoge.h"
#include "support/testordner.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QThread>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

/// The system's own calls, written down.
class Mitschrift final : public Druckertabelle {
public:
    explicit Mitschrift(std::uint32_t platformId)
        : platformId_(platformId) {}

    QStringList rufe;

    bool GetVersionExA(Versionsangabe& version) override {
        const bool gut = system_.GetVersionExA(version);
        if (platformId_ != 0) {
            version.platformId = platformId_;
        }
        return merke(u"GetVersionExA %1"_s.arg(version.platformId), gut);
    }
    bool OpenPrinterA(const char* name, Handle& printer, std::uint32_t access) override {
        return merke(u"OpenPrinterA %1"_s.arg(QLatin1StringView(name)),
                     system_.OpenPrinterA(name, printer, access));
    }
    bool GetPrinterA(Handle printer, std::uint32_t level, unsigned char* buffer, std::uint32_t size,
                     std::uint32_t& needed) override {
        return merke(u"GetPrinterA %1"_s.arg(level) + (size == 0 ? u" size"_s : QString()),
                     system_.GetPrinterA(printer, level, buffer, size, needed));
    }
    bool SetPrinterA(Handle printer, std::uint32_t level, Druckersatz5& record) override {
        return merke(u"SetPrinterA %1 %2"_s.arg(level).arg(record.attributes & 4U),
                     system_.SetPrinterA(printer, level, record));
    }
    void ClosePrinter(Handle printer) override {
        system_.ClosePrinter(printer);
        merke(u"ClosePrinter"_s, true);
    }
    std::uint32_t GetLastError() override { return system_.GetLastError(); }
    std::uint32_t GetProfileStringA(const char* section, const char* key, const char* fallback,
                                    char* buffer, std::uint32_t size) override {
        return system_.GetProfileStringA(section, key, fallback, buffer, size);
    }
    bool WriteProfileStringA(const char* section, const char* key, const char* value) override {
        return merke(
            u"WriteProfileStringA %1 %2"_s.arg(QLatin1StringView(section), QLatin1StringView(key)),
            system_.WriteProfileStringA(section, key, value));
    }
    void SendMessageA(std::uintptr_t window, std::uint32_t message, std::uintptr_t first,
                      const char* second) override {
        system_.SendMessageA(window, message, first, second);
        merke(u"SendMessageA %1 %2 %3"_s.arg(window).arg(message).arg(QLatin1StringView(second)),
              true);
    }

private:
    bool merke(const QString& ruf, bool gut) {
        rufe << ruf + (gut ? QString() : u" failed"_s);
        return gut;
    }

    Druckertabelle& system_ = windowsDruckertabelle();
    std::uint32_t platformId_;
};

struct Einer final : Druckersammlung {
    QString jetziger;
    QStringList gerätenamen() const override { return {u"Imkerei"_s, u"Lager"_s}; }
    QString aktueller() const override { return jetziger; }
    void wähle(const QString& gerätename) override { jetziger = gerätename; }
};

class WindowsDrucker : public testing::Test {
protected:
    void SetUp() override {
        if (!WindowsDruckersystem(windowsDruckertabelle(), dialoge_, texte_)
                 .liste()
                 .contains(u"Lager"_s)) {
            GTEST_SKIP() << "no printer of that name here";
        }
    }

    TestDialoge dialoge_;
    Texte texte_{QString()};
};

TEST_F(WindowsDrucker, default_isSetAndSetBackByTheProfile) {
    Mitschrift tabelle(0);
    Einer sammlung;
    DruckDef druckdef(tabelle, sammlung, dialoge_, texte_);
    const QString vorher = druckdef.standarddrucker();
    EXPECT_FALSE(vorher.isEmpty());
    EXPECT_TRUE(druckdef.StandardDruckerSetzen(u"Lager"_s));
    EXPECT_EQ(druckdef.standarddrucker(), u"Lager"_s);
    EXPECT_EQ(sammlung.jetziger, u"Lager"_s);
    EXPECT_EQ(tabelle.rufe.join(u", "_s).toStdString(),
              "GetVersionExA 2, WriteProfileStringA windows Device, SendMessageA 65535 26 windows");
    tabelle.rufe.clear();
    EXPECT_FALSE(druckdef.StandardDruckerSetzen(u"Keller"_s));
    EXPECT_EQ(druckdef.standarddrucker(), u"Lager"_s);
    EXPECT_TRUE(druckdef.StandardDruckerSetzen(vorher));
    EXPECT_EQ(druckdef.standarddrucker(), vorher);
}

TEST_F(WindowsDrucker, methodOfOlderSystems_asksAndSetsTheRecord) {
    Mitschrift tabelle(1);
    Einer sammlung;
    DruckDef druckdef(tabelle, sammlung, dialoge_, texte_);
    // Wine cannot set such a record: then it is told.
    const bool gesetzt = druckdef.StandardDruckerSetzen(u"Lager"_s);
    EXPECT_EQ(tabelle.rufe.join(u", "_s).toStdString(),
              std::string("GetVersionExA 1, OpenPrinterA Lager, GetPrinterA 5 size failed, "
                          "GetPrinterA 5, SetPrinterA 5 4") +
                  (gesetzt ? "" : " failed") + ", ClosePrinter");
    EXPECT_EQ(dialoge_.meldungen.size(), gesetzt ? 0 : 1);
    tabelle.rufe.clear();
    EXPECT_FALSE(druckdef.StandardDruckerSetzen(u"Keller"_s));
    EXPECT_EQ(tabelle.rufe.join(u", "_s).toStdString(),
              "GetVersionExA 1, OpenPrinterA Keller failed");
}

TEST_F(WindowsDrucker, twoPages_comeOut) {
    WindowsDruckersystem system(windowsDruckertabelle(), dialoge_, texte_);
    const auto maler = [](QPagedPaintDevice& blatt) {
        QPainter painter(&blatt);
        painter.drawText(500, 500, u"Seite 1"_s);
        const bool weiter = blatt.newPage();
        painter.drawText(500, 500, u"Seite 2"_s);
        return weiter && painter.isActive();
    };
    EXPECT_TRUE(system.drucke({.drucker = u"Lager"_s, .titel = u"Völker"_s}, maler));
    EXPECT_FALSE(system.drucke({.drucker = u"Keller"_s, .titel = u"Völker"_s}, maler));
    const QString blatt = qEnvironmentVariable("TARVEL_PRINTED") + u"/Lager"_s;
    const QDeadlineTimer frist(30'000);
    while (!QFile::exists(blatt) && !frist.hasExpired()) {
        QThread::msleep(20);
    }
    EXPECT_THAT(liesGanz(blatt).toStdString(), testing::HasSubstr("%%Pages: 2"));
}

} // namespace
} // namespace tarvel

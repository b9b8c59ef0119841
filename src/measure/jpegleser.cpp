#include "measure/jpegleser.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdio>

#include <jerror.h>
#include <jpeglib.h>

// The decoder reports errors by a jump. Every function that it can jump out of or back into keeps
// only plain values, so that the jump passes over no destructor.

namespace tarvel {
namespace {

constexpr std::size_t Puffergröße = std::size_t{64} * 1024;
constexpr int ZeilenAufEinmal = 16;
// Encoders write about ten scans. A file of nothing but scans would take hours, and of a large
// picture each takes its time.
constexpr int ÜblicheDurchgänge = 24;
constexpr int HöchstensDurchgänge = 200;
constexpr qint64 HöchstensGelesen = qint64{3'000'000'000}; // pixels of all scans together

qint64 erlaubteDurchgänge(const jpeg_decompress_struct& jpeg) {
    const qint64 bildpunkte = qint64{jpeg.image_width} * qint64{jpeg.image_height};
    return std::clamp<qint64>(HöchstensGelesen / std::max<qint64>(1, bildpunkte), ÜblicheDurchgänge,
                              HöchstensDurchgänge);
}

} // namespace

struct Jpegleser::Zustand {
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr melder{};
    jpeg_source_mgr zufuhr{};
    jpeg_progress_mgr wächter{};
    std::jmp_buf ausstieg{};
    QIODevice* quelle = nullptr;
    const Weiter* weiter = nullptr;
    Fehler fehler = Fehler::Keiner;
    std::array<char, JMSG_LENGTH_MAX> meldung{};
    std::array<JOCTET, Puffergröße> puffer{};
    std::array<JSAMPLE*, ZeilenAufEinmal> zeilen{};

    static Zustand& von(j_common_ptr jpeg) { return *static_cast<Zustand*>(jpeg->client_data); }
    static Zustand& von(j_decompress_ptr jpeg) { return *static_cast<Zustand*>(jpeg->client_data); }

    [[noreturn]] static void steigAus(j_common_ptr jpeg) {
        Zustand& z = von(jpeg);
        jpeg->err->format_message(jpeg, z.meldung.data());
        const int code = jpeg->err->msg_code;
        const bool zuKurz = code == JERR_INPUT_EOF || code == JERR_INPUT_EMPTY ||
                            code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER;
        z.fehler = zuKurz ? Fehler::Abgeschnitten : Fehler::Beschädigt;
        std::longjmp(z.ausstieg, 1);
    }

    static void warnung(j_common_ptr jpeg, int stufe) {
        if (stufe >= 0) {
            return;
        }
        switch (jpeg->err->msg_code) {
        case JWRN_HIT_MARKER:
        case JWRN_HUFF_BAD_CODE:
        case JWRN_MUST_RESYNC:
            steigAus(jpeg);
        default:
            break;
        }
    }

    static boolean fülle(j_decompress_ptr jpeg) {
        Zustand& z = von(jpeg);
        const qint64 anzahl =
            z.quelle->read(reinterpret_cast<char*>(z.puffer.data()), qint64{Puffergröße});
        if (anzahl <= 0) {
            ERREXIT(jpeg, JERR_INPUT_EOF);
        }
        z.zufuhr.next_input_byte = z.puffer.data();
        z.zufuhr.bytes_in_buffer = static_cast<std::size_t>(anzahl);
        return TRUE;
    }

    static void überspringe(j_decompress_ptr jpeg, long anzahl) {
        Zustand& z = von(jpeg);
        while (anzahl > 0 && static_cast<std::size_t>(anzahl) > z.zufuhr.bytes_in_buffer) {
            anzahl -= static_cast<long>(z.zufuhr.bytes_in_buffer);
            fülle(jpeg);
        }
        if (anzahl > 0) {
            z.zufuhr.next_input_byte += anzahl;
            z.zufuhr.bytes_in_buffer -= static_cast<std::size_t>(anzahl);
        }
    }

    static void wache(j_common_ptr jpeg) {
        const auto* bild = reinterpret_cast<j_decompress_ptr>(jpeg);
        if (bild->input_scan_number > erlaubteDurchgänge(*bild)) {
            ERREXIT(jpeg, JERR_BAD_PROGRESSION);
        }
        // While the scans are collected; after that the rows themselves are counted.
        const Zustand& z = von(jpeg);
        if (bild->output_scanline == 0 && !(*z.weiter)(z.quelle->pos(), z.quelle->size())) {
            ERREXIT(jpeg, JERR_CANT_SUSPEND);
        }
    }
};

Jpegleser::Jpegleser(QIODevice& quelle, const Weiter& weiter)
    : z_(std::make_unique<Zustand>()) {
    Zustand& z = *z_;
    z.quelle = &quelle;
    z.weiter = &weiter;
    z.jpeg.err = jpeg_std_error(&z.melder);
    z.melder.error_exit = Zustand::steigAus;
    z.melder.emit_message = Zustand::warnung;
    z.melder.output_message = [](j_common_ptr) {};
    z.zufuhr.init_source = [](j_decompress_ptr) {};
    z.zufuhr.fill_input_buffer = Zustand::fülle;
    z.zufuhr.skip_input_data = Zustand::überspringe;
    z.zufuhr.resync_to_restart = jpeg_resync_to_restart;
    z.zufuhr.term_source = [](j_decompress_ptr) {};
    z.wächter.progress_monitor = Zustand::wache;
}

Jpegleser::~Jpegleser() {
    jpeg_destroy_decompress(&z_->jpeg);
}

bool Jpegleser::liesKopf() {
    Zustand& z = *z_;
    z.jpeg.client_data = &z;
    if (setjmp(z.ausstieg) != 0) {
        return false;
    }
    jpeg_create_decompress(&z.jpeg);
    z.jpeg.src = &z.zufuhr;
    z.jpeg.progress = &z.wächter;
    jpeg_read_header(&z.jpeg, TRUE);
    switch (z.jpeg.jpeg_color_space) {
    case JCS_GRAYSCALE:
        z.jpeg.out_color_space = JCS_GRAYSCALE;
        break;
    case JCS_CMYK:
    case JCS_YCCK:
        z.jpeg.out_color_space = JCS_CMYK;
        break;
    default:
        z.jpeg.out_color_space = JCS_RGB;
        break;
    }
    return true;
}

QSize Jpegleser::größe() const {
    return {static_cast<int>(z_->jpeg.image_width), static_cast<int>(z_->jpeg.image_height)};
}

bool Jpegleser::grau() const {
    return z_->jpeg.out_color_space == JCS_GRAYSCALE;
}

qint64 Jpegleser::mindestBytes() const {
    // A block of 8 x 8 pixels takes one bit in each of at least one scan; arithmetic coding can
    // go below that.
    if (z_->jpeg.arith_code != FALSE) {
        return 0;
    }
    return qint64{z_->jpeg.image_width} * qint64{z_->jpeg.image_height} / (64 * 8);
}

qint64 Jpegleser::zwischenspeicher() const {
    if (jpeg_has_multiple_scans(&z_->jpeg) == FALSE) {
        return 0;
    }
    qint64 blöcke = 0;
    for (int i = 0; i < z_->jpeg.num_components; ++i) {
        const jpeg_component_info& teil = z_->jpeg.comp_info[i];
        blöcke += qint64{teil.width_in_blocks} * teil.height_in_blocks;
    }
    return blöcke * qint64{sizeof(JBLOCK)};
}

QSize Jpegleser::verkleinere(int achtel) {
    Zustand& z = *z_;
    if (setjmp(z.ausstieg) != 0) {
        return {};
    }
    z.jpeg.scale_num = static_cast<unsigned>(achtel);
    z.jpeg.scale_denom = 8;
    jpeg_calc_output_dimensions(&z.jpeg);
    return {static_cast<int>(z.jpeg.output_width), static_cast<int>(z.jpeg.output_height)};
}

namespace {

// Four inks to three lights. Files with an Adobe marker hold the inks inverted.
void ausDruckfarben(const JSAMPLE* cmyk, unsigned char* rgb, unsigned breite, bool invertiert) {
    for (unsigned x = 0; x < breite; ++x, cmyk += 4, rgb += 3) {
        const unsigned schwarz = invertiert ? cmyk[3] : 255U - cmyk[3];
        for (int farbe = 0; farbe < 3; ++farbe) {
            const unsigned licht = invertiert ? cmyk[farbe] : 255U - cmyk[farbe];
            rgb[farbe] = static_cast<unsigned char>((licht * schwarz + 127) / 255);
        }
    }
}

} // namespace

bool Jpegleser::liesZeilen(unsigned char* ziel, qsizetype schritt) {
    Zustand& z = *z_;
    if (setjmp(z.ausstieg) != 0) {
        return false;
    }
    jpeg_start_decompress(&z.jpeg);
    const bool druckfarben = z.jpeg.out_color_space == JCS_CMYK;
    JSAMPARRAY zwischen = nullptr;
    if (druckfarben) {
        zwischen = z.jpeg.mem->alloc_sarray(reinterpret_cast<j_common_ptr>(&z.jpeg), JPOOL_IMAGE,
                                            z.jpeg.output_width * 4, 1);
    }
    while (z.jpeg.output_scanline < z.jpeg.output_height) {
        if (!(*z.weiter)(z.jpeg.output_scanline, z.jpeg.output_height)) {
            return false;
        }
        unsigned char* zeile = ziel + qsizetype{z.jpeg.output_scanline} * schritt;
        if (druckfarben) {
            jpeg_read_scanlines(&z.jpeg, zwischen, 1);
            ausDruckfarben(zwischen[0], zeile, z.jpeg.output_width,
                           z.jpeg.saw_Adobe_marker != FALSE);
            continue;
        }
        const unsigned anzahl =
            std::min(unsigned{ZeilenAufEinmal}, z.jpeg.output_height - z.jpeg.output_scanline);
        for (unsigned i = 0; i < anzahl; ++i) {
            z.zeilen[i] = zeile + qsizetype{i} * schritt;
        }
        jpeg_read_scanlines(&z.jpeg, z.zeilen.data(), anzahl);
    }
    jpeg_finish_decompress(&z.jpeg);
    return true;
}

Jpegleser::Fehler Jpegleser::fehler() const {
    return z_->fehler;
}

QByteArray Jpegleser::meldung() const {
    return z_->meldung.data();
}

} // namespace tarvel

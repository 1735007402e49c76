// Writes a PNG of every screen, in Spanish and in Catalan, into the folder given on the
// command line: <folder>/<screen>_<language>.png, and again as it shows on a 1366×768 screen,
// <folder>/<screen>_<language>_1366x768.png (a screen that does not fit there is an error); and the
// first page of each customer and supplier list, printed from a sample exercise:
// <folder>/listing_<layout>_<language>.png, and the customers' list in its preview window:
// <folder>/listing_preview_<language>.png.
#include "books/customer_listings.h"
#include "context/file_tree.h"
#include "context/working_context.h"
#include "report/report_error.h"
#include "report/report_helpers.h"
#include "report/ui/report_preview.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "shell/ui/screen_gallery.h"
#include "store/database.h"

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>
#include <QWidget>

namespace {

// Sixty plausible customers and as many suppliers, the same at every run.
void fillSampleParties(const QString& gest) {
    static const char* const trades[] = {"Construcciones", "Ferretería", "Panadería",   "Talleres",
                                         "Distribuciones", "Cafetería",  "Farmacia",    "Librería",
                                         "Transportes",    "Fontanería", "Carpintería", "Gestoría",
                                         "Suministros",    "Maderas",    "Bebidas"};
    static const char* const surnames[] = {
        "García", "Martínez", "López", "Sánchez", "Pérez",  "Gómez",   "Fernández", "Ruiz",
        "Díaz",   "Moreno",   "Muñoz", "Álvarez", "Romero", "Navarro", "Torres",    "Puig",
        "Vidal",  "Ferrer",   "Soler", "Roca",    "Font",   "Casals"};
    static const char* const forms[] = {" S.L.", " S.A.", "", " e Hijos S.L.", " Hnos. S.L."};
    static const char* const streets[] = {
        "Calle Mayor",      "Avenida de la Constitución",
        "Calle Real",       "Plaza de España",
        "Carrer Gran",      "Rambla Catalunya",
        "Calle del Carmen", "Avenida Diagonal",
        "Carrer de Balmes", "Polígono Industrial El Olivar, nave"};
    static const char* const towns[][2] = {
        {"08001", "Barcelona"}, {"28013", "Madrid"},  {"46002", "Valencia"},  {"41001", "Sevilla"},
        {"17001", "Girona"},    {"25001", "Lleida"},  {"43001", "Tarragona"}, {"08201", "Sabadell"},
        {"08301", "Mataró"},    {"50001", "Zaragoza"}};
    static const char* const people[] = {"Juan",  "María",  "Jordi",      "Núria",
                                         "Pilar", "Manuel", "Montserrat", "José"};
    const auto pick = [](const auto& list, int n) {
        return QString::fromUtf8(list[n % std::size(list)]);
    };
    tallora::store::Database d = tallora::store::Database::open(gest);
    tallora::store::Transaction t(d);
    for (const QString& table : {QStringLiteral("Clients"), QStringLiteral("Proveidors")}) {
        tallora::store::Statement st =
            d.prepare(QStringLiteral("insert into %1 (nom, direccio, poblacio, cp, telefon, email) "
                                     "values (?, ?, ?, ?, ?, ?)")
                          .arg(table));
        for (int i = 0; i < 60; ++i) {
            const int k = i * 7 + (table == u"Clients" ? 0 : 3);
            const QString surname = pick(surnames, k * 5 + 1);
            const QString trade = pick(trades, k * 3 + (table == u"Clients" ? 0 : 7));
            const bool person = i % 4 == 3;
            const QString nom = person ? surname + u' ' + pick(surnames, k + 4) +
                                             QStringLiteral(", ") + pick(people, i / 4)
                                       : trade + u' ' + surname + pick(forms, k);
            const auto& town = towns[(i * 3 + i / 7) % std::size(towns)];
            st.reset();
            st.bind(1, nom);
            st.bind(2, pick(streets, k * 11) + QStringLiteral(", %1").arg(3 + (k * 37) % 170));
            st.bind(3, QString::fromUtf8(town[1]));
            st.bind(4, QString::fromUtf8(town[0]));
            st.bind(5, QStringLiteral("9%1 %2 %3")
                           .arg(30 + k % 60)
                           .arg(200 + (k * 53) % 700)
                           .arg(100 + (k * 29) % 900));
            QString mail = ((person ? pick(surnames, k + 4) : trade) + surname).toLower();
            mail = mail.normalized(QString::NormalizationForm_D)
                       .remove(QRegularExpression(QStringLiteral("[^a-z]")));
            st.bind(6, QStringLiteral("info@%1.es").arg(mail));
            st.execute();
        }
    }
    t.commit();
}

// The first page of each list, printed from a sample exercise in a temporary folder.
int writeListingPictures(const QString& folder, QTextStream& err) {
    QTemporaryDir unit;
    tallora::WorkingContext ctx;
    ctx.Unitat = unit.path();
    ctx.Directori =
        tallora::companyDir(ctx.Unitat, QStringLiteral("B1234567")) + QStringLiteral("2026/");
    ctx.programDir = unit.filePath(QStringLiteral("program/"));
    QDir().mkpath(ctx.Directori);
    QDir().mkpath(ctx.programDir);
    ctx.Exercici = QStringLiteral("2026");
    ctx.Moneda = QStringLiteral("Euros");
    ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
    tallora::schema::createExerciseDatabases(ctx.Directori);
    tallora::schema::Actualitza_Bases(ctx);
    fillSampleParties(ctx.exerciseFile(tallora::schema::db::Gest));
    using tallora::books::ListingKind;
    struct Listing {
        const char* name;
        void (*fill)(tallora::report::ReportJob&, const tallora::WorkingContext&, ListingKind,
                     const QDate&);
        ListingKind kind;
    };
    const Listing listings[] = {
        {"cli_dom", tallora::books::fillCustomerListing, ListingKind::Domicile},
        {"cli_con", tallora::books::fillCustomerListing, ListingKind::Contacts},
        {"pro_dom", tallora::books::fillSupplierListing, ListingKind::Domicile},
        {"pro_con", tallora::books::fillSupplierListing, ListingKind::Contacts}};
    int failures = 0;
    for (const QString& language : {QStringLiteral("esp"), QStringLiteral("cat")}) {
        ctx.setIdioma(language);
        for (const Listing& l : listings) {
            tallora::report::ReportJob job;
            l.fill(job, ctx, l.kind, QDate(2026, 3, 15));
            tallora::report::Marges_Informe(job, ctx);
            const QString file =
                QStringLiteral("%1/listing_%2_%3.png").arg(folder, QLatin1String(l.name), language);
            try {
                auto report = std::make_shared<tallora::report::RenderedReport>(
                    tallora::report::renderReport(job, ctx));
                bool saved = tallora::report::renderPageImage(*report, 0, 110).save(file);
                if (l.kind == ListingKind::Domicile &&
                    l.fill == tallora::books::fillCustomerListing) {
                    // The same list in its preview window, as the window destination shows it.
                    tallora::report::ReportPreview preview(report);
                    preview.resize(900, 800);
                    preview.show();
                    QApplication::processEvents();
                    saved =
                        preview.grab().save(
                            QStringLiteral("%1/listing_preview_%2.png").arg(folder, language)) &&
                        saved;
                }
                if (saved) continue;
                err << "cannot write " << file << "\n";
            } catch (const tallora::report::ReportError& e) {
                err << e.message() << "\n";
            }
            ++failures;
        }
    }
    return failures;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QTextStream err(stderr);
    if (argc != 2) {
        err << "usage: tallora5-screenshots <folder>\n";
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) {
        err << "cannot create " << folder << "\n";
        return 1;
    }
    int failures = 0;
    for (const QString& language : {QStringLiteral("esp"), QStringLiteral("cat")}) {
        for (const auto& screen : tallora::screenGallery()) {
            tallora::WorkingContext ctx;
            ctx.setIdioma(language);
            auto widget = screen.make(ctx);
            widget->show();
            QApplication::processEvents();
            const QString file = QStringLiteral("%1/%2_%3.png").arg(folder, screen.name, language);
            if (!widget->grab().save(file)) {
                err << "cannot write " << file << "\n";
                ++failures;
            }
            // The same screen as it shows on the smallest screen the program must work on.
            const QString overflow = tallora::overflowOnSmallScreen(widget.get());
            if (!overflow.isEmpty()) {
                err << screen.name << "_" << language << " does not fit 1366×768: " << overflow
                    << "\n";
                ++failures;
            }
            tallora::fitToSmallScreen(widget.get());
            QApplication::processEvents();
            const QString small =
                QStringLiteral("%1/%2_%3_1366x768.png").arg(folder, screen.name, language);
            if (!widget->grab().save(small)) {
                err << "cannot write " << small << "\n";
                ++failures;
            }
        }
    }
    failures += writeListingPictures(folder, err);
    return failures == 0 ? 0 : 1;
}

#include "treasury_gallery.h"

#include "context/working_context.h"
#include "treasury/runs.h"
#include "treasury/ui/form_cartera_run.h"

#include <QComboBox>
#include <QTableWidget>

namespace tallora {
namespace {

// The run screen of `side` after the sales and purchases of the sample: its draft emptied,
// then the first open receipt put in it in part and the next in full, and the bank chosen.
template <class Screen>
GalleryScreen runScreen(const treasury::RunSide& side,
                        std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    return {QLatin1String(side.screen), [&side, openExercise, &dialogs](WorkingContext& ctx) {
                openExercise(ctx);
                ctx.Tesoreria = true;
                treasury::Buida_Borrador(ctx, side);
                const auto open = treasury::openReceipts(ctx, side);
                if (open.empty()) qFatal("the sample has no receipt for %s", side.screen);
                treasury::Passa_Recibo(ctx, dialogs, side, open.front().id, QStringLiteral("100"));
                if (open.size() > 1)
                    treasury::Passa_Recibo(ctx, dialogs, side, open[1].id, QString());
                auto screen = std::make_unique<Screen>(ctx, dialogs);
                screen->resize(1200, 640);
                auto* accounts =
                    screen->template findChild<QComboBox*>(QStringLiteral("cmbEntitats"));
                accounts->setCurrentIndex(accounts->count() - 1);
                return std::unique_ptr<QWidget>(std::move(screen));
            }};
}

}  // namespace

void addTreasuryScreens(std::vector<GalleryScreen>& screens,
                        std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    screens.push_back(runScreen<FormCarteraCobrar>(treasury::kCollections, openExercise, dialogs));
    screens.push_back(runScreen<FormCarteraPagar>(treasury::kPayments, openExercise, dialogs));
}

}  // namespace tallora

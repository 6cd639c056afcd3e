#include "app/InputListEnv.h"

#include "app/InputDataPage.h"
#include "app/MessageBoxPrompt.h"
#include "list/modList.h"

#include <QPointer>

ListEnv InputListEnv(InputDataPage* page, ListProgress* progress) {
    ListEnv env(AppPrompt());
    env.progress = progress;
    QPointer<InputDataPage> p(page);
    env.showTotals = [] { ShowTotals(); };
    env.refreshSums = [p](const QString& list) {
        if (list == SumList::Input) {
            if (p)
                p->ShowSums();
        } else if (FindSumTarget(list)) {
            ShowSelectionSum(list);
        }
    };
    return env;
}

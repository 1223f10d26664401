// The report of the system's own binding: the interim page leads to the unbind page when a piece of
// it has the words "Active Directory Domain"; the unbind page shows what follows "= " in the last
// such piece that has a "= ".

#include "pages/applead.h"
#include "pages/interimintro.h"
#include "tests/robustness/fuzz/runner.h"

#include <QLabel>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Fuzz::Runner& runner = Fuzz::Runner::installed();
    runner.output = QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size));

    bool bound = false;
    QString domain;
    const QList<QByteArray> pieces = Reference::pieces(runner.output);
    for (const QByteArray& piece : pieces) {
        if (!piece.contains("Active Directory Domain"))
            continue;
        bound = true;
        const int separator = piece.lastIndexOf("= ");
        if (separator >= 0)
            domain = QString::fromLocal8Bit(piece.mid(separator + 2)).trimmed();
    }

    AppleAD page;
    page.setUIDomain();
    Fuzz::check(page.findChild<QLabel*>("ADName")->text() == domain, "the domain is shown");
    if (bound) {
        // Without a binding the interim page would ask the agent: a shell, which is too slow.
        InterimIntro interim;
        Fuzz::check(interim.validatePage(), "the query is a success");
        Fuzz::check(interim.nextId() == 2, "a binding leads to the unbind page");
    }
    return 0;
}

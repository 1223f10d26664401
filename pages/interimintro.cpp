#include "pages/interimintro.h"
#include "ui_interimintro.h"

#include "system/lowerpriv.h"
#include "system/probes.h"
#include "system/streamreader.h"

#include <cstring>

InterimIntro::InterimIntro(QWidget* parent) : QWizardPage(parent), ui(new Ui::InterimIntro)
{
    ui->setupUi(this);
}

InterimIntro::~InterimIntro()
{
    closePipe();
    delete ui;
}

void InterimIntro::closePipe()
{
    if (dsconfigPipe != nullptr)
        fclose(dsconfigPipe);
    dsconfigPipe = nullptr;
}

bool InterimIntro::validatePage()
{
    closePipe();
    char tool[] = "/usr/sbin/dsconfigad";
    char show[] = "-show";
    char* arguments[] = {show, nullptr};
    dsconfigStatus = g_pProcess->runPrivCmd(tool, arguments, &dsconfigPipe);
    return dsconfigStatus == 0;
}

int InterimIntro::nextId() const
{
    char line[512];
    while (dsconfigPipe != nullptr && readChunk(line, sizeof line, dsconfigPipe)) {
        if (strstr(line, "Active Directory Domain") != nullptr)
            return 2;
    }
    return isJoined() ? 6 : 3;
}

// Grants or refuses the running of a tool with privileges.
// usage: authorization_prompt TOOL
// Exit status: 0 granted, 1 cancelled by the user, 2 denied.
#include "practice/prompt/authorizationprompt.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    AuthorizationPrompt prompt(application.arguments().value(1));
    if (prompt.exec() == QDialog::Accepted)
        return 0;
    return prompt.denied() ? 2 : 1;
}

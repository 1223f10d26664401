#include "practice/prompt/localadministrator.h"

#include <crypt.h>
#include <cstring>
#include <grp.h>
#include <pwd.h>
#include <shadow.h>

namespace {

bool isAdministrator(const char* name)
{
    const passwd* account = getpwnam(name);
    if (account == nullptr)
        return false;
    if (account->pw_uid == 0)
        return true;
    const group* administrators = getgrnam("sudo");
    if (administrators == nullptr)
        return false;
    for (char** member = administrators->gr_mem; *member != nullptr; ++member)
        if (std::strcmp(*member, name) == 0)
            return true;
    return false;
}

} // namespace

bool isLocalAdministrator(const QString& name, const QString& password)
{
    const QByteArray account = name.toUtf8();
    if (!isAdministrator(account.constData()))
        return false;
    const spwd* shadow = getspnam(account.constData());
    if (shadow == nullptr)
        return false;
    const char* hash = crypt(password.toUtf8().constData(), shadow->sp_pwdp);
    return hash != nullptr && std::strcmp(hash, shadow->sp_pwdp) == 0;
}

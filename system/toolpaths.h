#pragma once

// All tools and scripts that the assistant runs, at their fixed places; only the prompt that stands
// in for a Mac's is named in platform/authorization.cpp.
namespace Tools {

// The agent's status tool, for the name of the domain, of the zone and of the computer.
constexpr char domainCommand[] = "/usr/local/bin/mvinfo -d";
constexpr char zoneCommand[] = "/usr/local/bin/mvinfo -z";
constexpr char computerCommand[] = "/usr/local/bin/mvinfo -n";

// The system's tools for the Mac's own name and its profiles.
constexpr char hostNameCommand[] = "/usr/sbin/scutil --get LocalHostName";
constexpr char profilesCommand[] = "/usr/bin/profiles -C";

// The agent's interpreter and the bundle's scripts for it; that of the credential check is written
// into a shell's command line, with its blanks escaped.
constexpr char interpreter[] = "/usr/local/bin/mvedit";
constexpr char containerScript[] = "/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/"
                                   "Contents/Resources/mvedit_file_arg.tcl";
constexpr char credentialScript[] =
    "/Applications/Utilities/Morvanta/Morvanta\\ Join\\ Assistant.app/"
    "Contents/Resources/check_domain_cred.tcl";

// Run with administrator rights: the system's directory plug-in, and the agent's helper tool, which
// runs the agent's join or leave tool.
constexpr char directoryPlugin[] = "/usr/sbin/dsconfigad";
constexpr char helper[] = "/usr/local/share/morvantad/libexec/gui_helper_tool";
constexpr char join[] = "/usr/local/sbin/mvjoin";
constexpr char leave[] = "/usr/local/sbin/mvleave";

} // namespace Tools

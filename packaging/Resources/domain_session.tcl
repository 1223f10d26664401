# Signing in to an Active Directory domain with a Mac's tools: kinit gets a ticket from a domain
# controller, with which ldapsearch asks that controller over a signed connection. Sourced by the scripts
# beside it. Of the tools only kinit gets the password, on its standard input. The ticket's private folder
# is deleted at the end, unless the script is killed.
if {![package vsatisfies [info patchlevel] 8.6-]} {
    puts stderr "These scripts need Tcl 8.6 or newer, and this is [info patchlevel]: update the agent."
    exit 1
}

namespace eval session {
    variable domain ""; variable user ""
    variable base "" ;# the domain's distinguished name
    variable controllers {} ;# host names of those that may still be asked, the preferred one first
    variable controller "" ;# the one that is asked
    variable directory "" ;# private, for the ticket and the Kerberos settings
    variable output ;# array: the bytes that each running tool has written, by its channel
    variable ended {} ;# the channels of the tools that have ended, in their order
    # What kinit and ldapsearch say, as MIT's and the Mac's word it, and the sentence for it. The first
    # that fits counts.
    variable causes {
        {password (has )?expired|changing password}
        "The password of $user has expired or must be changed: change it, for example by logging in once."
        {(server.*krbtgt.*|enterprise name) (not found|unknown)}
        "The domain $domain knows no $user: check the name, and its suffix or short domain name."
        {server.* (not found|unknown)}
        "The domain does not know the service of $controller: have that account's service names checked."
        {client (not found|unknown)}
        "The user $user is not known in the domain $domain: check the user name."
        {password incorrect|preauthentication failed|decrypt integrity check failed}
        "The password of $user is not right: enter it again, and mind the Caps Lock key."
        {revoked|entry in database has expired}
        "The account $user is disabled, locked, expired or outside its logon hours: have it checked."
        {policy rejects}
        "The domain's policy lets $user sign in with a smart card only, or not here: use another account."
        {no support for encryption type|no key matching}
        "The account $user and this Mac have no encryption type in common: have AES allowed for it."
        {(clock|time) skew}
        "The clock of this Mac is too far off the domain's: set its date and time, and try again."
        {strong(\(er\))? auth|too weak|confidentiality required}
        "$controller and this Mac do not agree on signing or sealing: have the LDAP settings checked."
    }
}
source [file join [file dirname [file normalize [info script]]] tool_runs.tcl]
source [file join [file dirname [file normalize [info script]]] domain_controllers.tcl]

# Runs `body`, at the top level, signed in to the domain; once more on another controller when the
# one that was chosen is lost.
proc session::run {theDomain theUser password body} {
    variable domain [string trimright $theDomain .]
    variable user $theUser
    variable directory; variable controllers
    report {
        check_entries $password
        list_controllers
        make_directory
        try {
            sign_in $password
            uplevel #0 $body
        } trap {SESSION LOST} {sentence} {
            if {$controllers eq {}} {
                fail $sentence
            }
            sign_in $password
            uplevel #0 $body
        } finally {
            file delete -force $directory
        }
    }
}

# Runs `body`. A failure is told on standard error, the first line one plain sentence for the
# administrator, and ends the program with status 1.
proc session::report {body} {
    try {
        uplevel 1 $body
    } trap SESSION {sentence} {
        puts stderr $sentence
        exit 1
    }
}

proc session::fail {sentence {details ""} {kind FAILED}} {
    throw [list SESSION $kind] [string trimright "$sentence\n$details"]
}

proc session::check_entries {password} {
    variable domain; variable user
    set label {[A-Za-z0-9_]([-A-Za-z0-9_]{0,61}[A-Za-z0-9_])?}
    if {![regexp "^${label}(\\.${label})*$" $domain] || [string length $domain] > 255} {
        fail "\"$domain\" is not a valid domain name: enter its full DNS name, such as example.com."
    }
    if {![regexp {^[^@\\<>\x00-\x1f\x7f]+([@\\][^@\\<>\x00-\x1f\x7f]+)?$} $user]} {
        fail "\"$user\" is not a valid user name: enter it alone, as user@suffix or as DOMAIN\\user."
    }
    if {$password eq ""} {
        fail "The password is empty: enter the password of $user."
    }
    if {[string first \n $password] >= 0} { ;# kinit would take what stands before it for the whole
        fail "The password has a line end in it: enter the password of $user by hand."
    }
}

proc session::make_directory {} {
    variable directory
    lassign [execute "" mktemp -d] status answer
    if {$status != 0} {
        fail_without_room $answer
    }
    set directory [string trim $answer]
}

# The settings name one controller, as the master, too: MIT's kinit would ask DNS, which may be slow, for
# one that isn't named, as after a wrong password. `kdcs` is how it can be asked, the best way first.
proc session::write_settings {kdcs} {
    variable domain; variable controller; variable directory
    set realm [string toupper $domain]
    try {
        set settings [open $directory/krb5.conf w]
        puts $settings "\[libdefaults\]\n default_realm = $realm\n rdns = false"
        puts $settings "\[realms\]\n $realm = \{\n  master_kdc = $controller"
        foreach kdc $kdcs {
            puts $settings "  kdc = $kdc"
        }
        puts $settings " \}"
        close $settings
    } on error {message} {
        fail_without_room $message
    }
}

proc session::fail_without_room {details} {
    fail "This Mac can't write a temporary file: free space on its disk, and try again." $details
}

# Chooses a controller and gets a ticket from it.
proc session::sign_in {password} {
    global env
    variable domain; variable user; variable directory; variable controller
    choose_controller
    set ticket FILE:$directory/ticket
    array set env [list KRB5_CONFIG $directory/krb5.conf KRB5CCNAME $ticket]
    array set env {LDAPSASL_NOCANON on LC_ALL C} ;# no reverse DNS; messages in English, as `causes` has them
    # -E is the option of MIT's kinit for an enterprise name. The Mac's is Heimdal's, which has others, asks
    # by UDP unless it is told TCP, and without -c would write over a ticket of the user's own.
    lassign [list $controller -E] kdcs enterprise from
    if {[string match *Heimdal* [lindex [execute "" kinit --version] 1]]} {
        lassign [list "tcp/$controller $controller" --enterprise --password-file=STDIN] kdcs enterprise from
    }
    write_settings $kdcs
    lassign [execute $password\n kinit -c $ticket -l 10m {*}$from {*}[principal $enterprise]] status answer
    if {$status != 0} {
        explain $answer "The domain $domain did not accept $user"
    }
}

# The user as kinit takes him: NAME@REALM for a name alone or with the domain's own DNS name, or else an
# enterprise name, whose owner the controller looks for by the suffix or short domain name in it.
proc session::principal {enterprise} {
    variable domain; variable user
    regexp {^(?:(.*)\\)?([^@]*)(?:@(.*))?$} $user -> short name suffix
    set suffix $short$suffix
    if {$suffix eq "" || [string equal -nocase $suffix $domain]} {
        return [list -- $name@[string toupper $domain]]
    }
    return [list $enterprise -- $name@$suffix]
}

# Searches in or below `base`; returns the result as LDIF.
proc session::search {scope filter args} {
    variable controller; variable base
    lassign [execute "" ldapsearch -LLL -Q -Y GSSAPI -O minssf=1 -o ldif-wrap=no -o nettimeout=2 \
        -E pr=1000/noprompt -H ldap://$controller -b $base -s $scope $filter {*}$args] status answer
    if {$status != 0} {
        # Entries that were listed before the failure are no part of the tool's message.
        set answer [regsub -all -line {^((dn:|#).*)?\n} $answer ""]
        explain $answer "The domain controller $controller refused the question"
    }
    return $answer
}

# Fails with the sentence for what a tool said, or else with the tool's own words.
proc session::explain {answer refusal} {
    variable causes; variable domain; variable user; variable controller
    # Names that a tool repeats are taken out, as they could hold the words of a cause. Only an enterprise
    # name is written with \@.
    set wording [regsub -all -line {Password for .*: } $answer ""]
    set wording [regsub -all -line {Client ['(].*\\@.*[')]} $wording "Enterprise name"]
    set wording [regsub -all -line {Client ['(].*[')]} $wording "Client"]
    foreach {pattern sentence} $causes {
        if {[regexp -nocase -line $pattern $wording]} {
            fail [subst -nocommands -nobackslashes $sentence] $answer
        }
    }
    # A kinit that can't reach another domain's controllers, which that domain's users need, says so; this
    # one isn't lost then. A silent tool doesn't say for whom it waits, so this one counts as lost.
    set kerberos "(contact|reach) any KDC (for|in) realm '?${domain}(?!\[-.]?\\w)"
    if {[regexp -nocase "$kerberos|can't contact ldap|timed out" $wording]} {
        fail "The controller $controller stopped answering: check the network, and try again." $answer LOST
    }
    fail "$refusal; ask its administrators: [regsub -all {\s+} [string trim $wording] { }]" $answer
}

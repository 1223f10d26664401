# Signing in to an Active Directory domain with the tools that a Mac carries: dig finds the
# controllers, kinit gets a ticket, ldapsearch asks over a signed connection. Sourced by the scripts
# beside it. The password goes to kinit's standard input alone, and the ticket lies in a private
# directory that `session::close` removes.
package require Tcl 8.6

namespace eval session {
    variable directory "" ;# private: the ticket and the Kerberos settings
    variable controllers {} ;# host names, the preferred one first
    variable seconds 15 ;# that any one tool may be silent
}

# Runs `body` signed in to the domain, and always signs out. A failure is told on standard error, the
# first line one plain sentence for the administrator, and ends the program with status 1.
proc session::run {domain user password body} {
    try {
        open_session $domain $user $password
        uplevel $body
    } trap SESSION {sentence} {
        puts stderr $sentence
        close_session
        exit 1
    } finally {
        close_session
    }
}

proc session::fail {sentence {details ""}} {
    throw SESSION [string trimright "$sentence\n$details"]
}

proc session::open_session {domain user password} {
    variable controllers
    set domain [string trimright $domain .]
    check_names $domain $user
    set controllers [find_controllers $domain]
    make_directory $domain
    get_ticket $domain [principal $domain $user] $password
}

proc session::close_session {} {
    variable directory
    if {$directory ne ""} {
        file delete -force $directory
        set directory ""
    }
}

proc session::check_names {domain user} {
    set label {[A-Za-z0-9_]([-A-Za-z0-9_]{0,61}[A-Za-z0-9_])?}
    if {![regexp "^${label}(\\.${label})+$" $domain] || [string length $domain] > 255} {
        fail "\"$domain\" is not a valid domain name: enter the full DNS name of the domain, such\
              as example.com."
    }
    if {![regexp {^[^][:cntrl:]"/\\:;|=,+*?<>@[]+(@[^[:space:]@]+)?$} $user]} {
        fail "\"$user\" is not a valid user name: enter the administrator's logon name alone, without\
              the domain."
    }
}

# The host names of the domain's controllers as DNS lists them, in their order of preference.
proc session::find_controllers {domain} {
    lassign [execute "" dig +time=2 +tries=2 +noall +answer +comments SRV \
        _ldap._tcp.dc._msdcs.$domain.] status answer
    set found {}
    foreach line [split $answer \n] {
        if {[regexp {\sSRV\s+(\d+)\s+(\d+)\s+\d+\s+(\S+)\.$} $line -> priority weight host]} {
            lappend found [list $priority [expr {-$weight}] $host]
        }
    }
    if {$status != 0} {
        fail "The domain $domain was not found, because no DNS server answered: check the network and\
              this Mac's DNS settings." $answer
    }
    if {$found eq {}} {
        fail "The domain $domain was not found: check its spelling, and that this Mac uses the\
              domain's DNS servers."
    }
    set sorted [lsort -integer -index 0 [lsort -integer -index 1 $found]]
    return [lmap entry $sorted {lindex $entry 2}]
}

# The private directory, with Kerberos settings that name the controllers and take this Mac's clock
# as it is: a clock that is too far off would break the join later.
proc session::make_directory {domain} {
    global env
    variable directory
    variable controllers
    set directory [string trim [exec mktemp -d]]
    set realm [string toupper $domain]
    set settings [open $directory/krb5.conf w]
    puts $settings "\[libdefaults\]\n default_realm = $realm\n rdns = false\n kdc_timesync = 0"
    puts $settings "\[realms\]\n $realm = \{"
    foreach host $controllers {
        puts $settings "  kdc = $host"
    }
    puts $settings " \}"
    close $settings
    set env(KRB5_CONFIG) $directory/krb5.conf
    set env(KRB5CCNAME) FILE:$directory/ticket
    set env(LDAPSASL_NOCANON) on
    set env(LC_ALL) C
}

proc session::principal {domain user} {
    lassign [split $user @] name suffix
    if {$suffix eq ""} {
        set suffix $domain
    }
    return $name@[string toupper $suffix]
}

proc session::get_ticket {domain principal password} {
    set command [list kinit -l 10m $principal]
    if {[string match *Heimdal* [lindex [execute "" kinit --version] 1]]} {
        set command [list kinit -l 10m --password-file=STDIN $principal]
    }
    lassign [execute $password\n {*}$command] status answer
    if {$status == 0} {
        return
    }
    set user [lindex [split $principal @] 0]
    # The wordings of MIT's and of the Mac's kinit; a name may hold any of them.
    set answer [string map [list $principal $user] $answer]
    set wording [string map [list $user ""] $answer]
    foreach {pattern sentence} {
        {password.*expired|must change|change.* password}
            "The password of $user has expired: change it, for example by logging in once, and try\
             again."
        {not found in kerberos database|client .*unknown}
            "The user $user is not known in the domain $domain: check the user name."
        {password incorrect|preauthentication failed|decrypt integrity check failed}
            "The password of $user is not right: enter it again, and mind the Caps Lock key."
        {revoked|locked out|expired}
            "The account $user is locked or disabled: have it unlocked, or use another\
             administrator's."
        {clock skew}
            "The clock of this Mac is too far off: set its date and time to the domain's, within five\
             minutes, and try again."
        {cannot contact|unable to reach|cannot resolve|timed out}
            "No domain controller of $domain can be reached: check the network and any firewall\
             between this Mac and the domain."
    } {
        if {[regexp -nocase -line $pattern $wording]} {
            fail [subst -nocommands -nobackslashes $sentence] $answer
        }
    }
    fail "The domain $domain did not accept $user: show the next lines to the domain's administrators."\
        $answer
}

# Searches below `base` on the first controller that answers; returns the result as LDIF.
proc session::search {domain base scope filter args} {
    variable controllers
    foreach host $controllers {
        lassign [execute "" ldapsearch -LLL -Q -Y GSSAPI -O minssf=1 -o ldif-wrap=no \
            -o nettimeout=5 -E pr=1000/noprompt -H ldap://$host -b $base -s $scope $filter {*}$args] \
            status answer
        if {$status == 0} {
            return $answer
        }
        if {![regexp {Can't contact LDAP server|timed out} $answer]} {
            fail "The domain controller $host refused the question: show the next lines to the\
                  domain's administrators." $answer
        }
    }
    fail "No domain controller of $domain can be reached: check the network and any firewall between\
          this Mac and the domain." $answer
}

# The distinguished name of the domain itself.
proc session::base {domain} {
    return DC=[join [split [string trimright $domain .] .] ,DC=]
}

# Runs a tool with `input` as its standard input. Returns its exit status and what it wrote, both
# streams in one, as bytes; the status is -1 for a tool that was ended because it was silent for too
# long.
proc session::execute {input args} {
    variable seconds
    if {[catch {open |[list {*}$args 2>@1] r+} channel]} {
        fail "The tool [lindex $args 0] is missing on this Mac: install it and try again." $channel
    }
    fconfigure $channel -blocking 0 -translation binary
    catch {
        puts -nonewline $channel [encoding convertto [encoding system] $input]
        chan close $channel write
    }
    set ::session::output ""
    set ::session::ended ""
    fileevent $channel readable [list session::collect $channel]
    await_output
    vwait ::session::ended
    after cancel {set ::session::ended "timed out"}
    if {$::session::ended eq "timed out"} {
        exec kill -9 {*}[pid $channel]
        catch {close $channel}
        return [list -1 "[lindex $args 0]: timed out after $seconds seconds"]
    }
    fconfigure $channel -blocking 1
    set status 0
    if {[catch {close $channel} message options]} {
        set code [dict get $options -errorcode]
        set status [expr {[lindex $code 0] eq "CHILDSTATUS" ? [lindex $code 2] : 128}]
    }
    return [list $status $::session::output]
}

proc session::await_output {} {
    variable seconds
    after cancel {set ::session::ended "timed out"}
    after [expr {$seconds * 1000}] {set ::session::ended "timed out"}
}

proc session::collect {channel} {
    append ::session::output [read $channel]
    await_output
    if {[eof $channel]} {
        set ::session::ended "ended"
    }
}

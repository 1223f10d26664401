# Finding a domain's controllers: the name servers that this Mac uses for the domain list them, and the
# first controller that answers is chosen. Sourced by domain_session.tcl.

# Sets `controllers` to the host names of the domain's controllers, the preferred ones first, and `base`.
proc session::list_controllers {} {
    variable domain; variable base; variable controllers
    set base DC=[join [split $domain .] ,DC=]
    set found {}
    foreach line [split [look_up SRV _ldap._tcp.dc._msdcs.$domain.] \n] {
        if {[regexp {\sSRV\s+(\d+)\s+(\d+)\s+\d+\s+([-\w.]+)\.$} $line -> priority weight host]} {
            lappend found [list $priority $weight $host]
        }
    }
    if {$found eq {}} {
        fail_without_controllers
    }
    set found [lsort -integer -index 0 [lsort -integer -decreasing -index 1 $found]]
    set controllers [lmap entry $found {lindex $entry 2}]
}

proc session::fail_without_controllers {} {
    variable domain
    set unknown [string match "*status: NXDOMAIN*" [look_up SOA $domain.]]
    if {$unknown && [string match -nocase *.local $domain]} {
        fail "No DNS server knows $domain, and a Mac looks for .local names nearby: have its DNS servers set."
    }
    if {$unknown} {
        fail "The domain $domain was not found: check its full name, and that this Mac uses its DNS servers."
    }
    fail "DNS lists no domain controller of $domain: check the name, and that this Mac uses its DNS servers."
}

# The answer of the first name server that knows whether there is such a name.
proc session::look_up {type name} {
    variable domain
    foreach server [name_servers] {
        set answer [lindex [execute "" \
            dig {*}$server +time=1 +tries=2 +noshort +noall +answer +comments $type $name] 1]
        if {[regexp {status: (NOERROR|NXDOMAIN)} $answer]} {
            return $answer
        }
    }
    set word "no answer"
    regexp {status: (\w+)} $answer -> word
    fail "No DNS server could look up $domain ($word): check the network and this Mac's DNS settings." $answer
}

# The name servers that a Mac asks for the domain, each as a list of options for dig; a single empty list,
# with which dig asks its own, where none is known. `scutil --dns` lists the resolvers for all programs,
# then others for single interfaces.
proc session::name_servers {} {
    variable domain
    set listing [expr {[auto_execok scutil] eq "" ? "" : [lindex [execute "" scutil --dns] 1]}]
    regsub {DNS configuration \(for scoped queries\).*} $listing "" listing
    set fitting {}
    foreach entry [split [string map {"resolver #" \0} $listing] \0] {
        lassign {* 0 53} name order port ;# for what the entry leaves out; * fits each domain
        regexp -line {^\s*domain\s*: (\S+)} $entry -> name
        regexp -line {^\s*order\s*: (\d+)} $entry -> order
        regexp -line {^\s*port\s*: (\d+)} $entry -> port
        set servers [lmap {-> address} [regexp -all -inline {nameserver\[\d+\]\s*: (\S+)} $entry] {
            list @$address -p $port
        }]
        if {$servers ne {} && [string match -nocase *.$name .$domain] && ![regexp {options *: mdns} $entry]} {
            lappend fitting [list [string length $name] $order $servers]
        }
    }
    set fitting [lsort -integer -decreasing -index 0 [lsort -integer -index 1 $fitting]]
    return [expr {$fitting eq {} ? {{}} : [lindex $fitting 0 2]}]
}

# Sets `controller` to the first of `controllers` that answers, by its own name, and takes it out of that
# list; the others stay there, for when it is lost. Sixteen are asked side by side, the next sixteen when
# none has answered within a second or all have failed; the last have what is left of five seconds. Fails
# when none answers, or when this Mac's clock is wrong.
proc session::choose_controller {} {
    variable domain; variable controllers; variable controller
    set waiting $controllers
    set until [expr {[clock milliseconds] + 5000}]
    set best {}
    while {$best eq {} && $waiting ne {} && [clock milliseconds] < $until} {
        set batch [lrange $waiting 0 15]
        set waiting [lrange $waiting 16 end]
        set next [expr {$waiting eq {} ? $until : min($until, [clock milliseconds] + 1000)}]
        set best [first_answer $batch $next]
    }
    if {$best eq {}} {
        set tried [expr {[llength $controllers] - [llength $waiting]}]
        fail "No domain controller of $domain can be reached ($tried tried): check network and firewalls."
    }
    lassign $best host controller time
    set controllers [lsearch -all -inline -not -exact $controllers $host]
    check_clock $time
}

# Asks these controllers until a time in milliseconds. Of the first that answers as one of the domain's
# and takes connections for Kerberos, returns the name by which DNS lists it, its own name and its time,
# such as 20261231235959 in UTC; nothing when none does.
proc session::first_answer {hosts until} {
    variable output; variable base
    foreach host $hosts {
        set asked([start "" ldapsearch -x -LLL -o ldif-wrap=no -o nettimeout=2 -H ldap://$host -b "" \
            -s base (objectClass=*) currentTime defaultNamingContext dnsHostName]) $host
    }
    set best {}
    while {$best eq {} && [array size output] > 0
            && [set channel [next_ended [expr {max($until - [clock milliseconds], 0)}]]] ne ""} {
        lassign [result $channel] status answer
        if {$status == 0 && [info exists connected($channel)]} {
            set best $connected($channel)
        } elseif {[regexp -line {^dnsHostName: ([-\w.]+)$} $answer -> name]
                && [regexp -line {^currentTime: (\d{14})} $answer -> time]
                && [regexp -nocase -line "^defaultNamingContext: $base$" $answer]} {
            set connected([connect $name 88]) [list $asked($channel) $name $time]
        }
    }
    stop_all
    return $best
}

# Kerberos takes no clock that is more than five minutes off the controller's.
proc session::check_clock {time} {
    set ahead [expr {[clock seconds] - [clock scan $time -format %Y%m%d%H%M%S -gmt 1]}]
    set minutes [expr {round(abs($ahead) / 60.0)}]
    set where [expr {$ahead > 0 ? "ahead of" : "behind"}]
    if {abs($ahead) > 300} {
        fail "This Mac's clock is $minutes minutes $where the domain's: set its date and time, and try again."
    }
}

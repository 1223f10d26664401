#!/usr/bin/env tclsh
# Lists the containers of a domain, OUs and CNs alike: one distinguished name a line, in UTF-8.
#
# usage: mvedit_file_arg.tcl DOMAIN USER PASSWORD
# Exit status 0 when the list is whole; otherwise 1, and standard error says what to do.
source [file join [file dirname [file normalize [info script]]] domain_session.tcl]

# The names in LDIF; those that are not plain ASCII come as base64.
proc distinguished_names {ldif} {
    set names {}
    foreach line [split $ldif \n] {
        if {[regexp {^dn:: (.*)} $line -> coded]} {
            lappend names [encoding convertfrom utf-8 [binary decode base64 $coded]]
        } elseif {[regexp {^dn: (.*)} $line -> name]} {
            lappend names $name
        }
    }
    return $names
}

lassign $argv domain user password
session::run $domain $user $password {
    set ldif [session::search $domain [session::base $domain] sub \
        (|(objectClass=organizationalUnit)(objectClass=container)) 1.1]
    fconfigure stdout -encoding utf-8
    puts [join [distinguished_names $ldif] \n]
}

#!/usr/local/bin/mvedit
# Lists the containers of a domain, OUs and CNs alike: one distinguished name a line, in UTF-8.
#
# usage: mvedit_file_arg.tcl DOMAIN USER PASSWORD
# Exit status 0 when the list is whole; otherwise 1, and standard error says what to do.
source [file join [file dirname [file normalize [info script]]] domain_session.tcl]

lassign $argv domain user password
session::run $domain $user $password {
    set ldif [session::search sub (|(objectClass=organizationalUnit)(objectClass=container)) 1.1]
    fconfigure stdout -encoding utf-8
    # Names that are not plain ASCII come as base64, after two colons.
    foreach {-> coded name} [regexp -all -inline -line {^dn:(:?) (.*)$} $ldif] {
        puts [expr {$coded eq "" ? $name : [encoding convertfrom utf-8 [binary decode base64 $name]]}]
    }
}

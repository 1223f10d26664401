#!/usr/local/bin/mvedit
# Checks an administrator's name and password against a domain: signs in and asks it one question.
#
# usage: check_domain_cred.tcl DOMAIN USER PASSWORD
# Exit status 0 when they are right; otherwise 1, and the first line on standard error says what to do.
source [file join [file dirname [file normalize [info script]]] domain_session.tcl]

lassign $argv domain user password
session::run $domain $user $password {
    session::search base (objectClass=*) 1.1
}

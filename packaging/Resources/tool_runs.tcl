# Running the system's tools, one alone or several side by side. Sourced by domain_session.tcl.

# Runs a tool, while no other runs, to its end with `input` as its standard input. Returns its exit status
# and what it wrote. Looks at it every ten seconds: when nothing has come since the last look, ends it and
# returns -1 and what it wrote with the line "TOOL: timed out".
proc session::execute {input args} {
    variable output
    set channel [start $input {*}$args]
    set heard 0
    while {[next_ended 10000] eq ""} {
        if {[string length $output($channel)] == $heard} {
            set text [written $channel]
            stop_all
            return [list -1 [string trimleft "$text\n[lindex $args 0]: timed out"]]
        }
        set heard [string length $output($channel)]
    }
    return [result $channel]
}

# Starts a tool and returns its channel; fails when it can't be started.
proc session::start {input args} {
    variable output
    if {[catch {open |[list {*}$args 2>@1] r+} channel options]} {
        if {[lindex [dict get $options -errorcode] 1] eq "ENOENT"} {
            fail "The tool [lindex $args 0] is missing on this Mac: install it and try again." $channel
        }
        fail "The tool [lindex $args 0] can't be started: end some programs, and try again." $channel
    }
    set output($channel) ""
    fconfigure $channel -blocking 0 -translation binary
    catch {
        puts -nonewline $channel [encoding convertto [encoding system] $input]
        chan close $channel write
    }
    fileevent $channel readable [list session::collect $channel]
    return $channel
}

proc session::collect {channel} {
    variable output
    append output($channel) [read $channel]
    if {[eof $channel]} {
        fileevent $channel readable {}
        lappend session::ended $channel
    }
}

# Opens a connection, which counts as a tool that ends once the connection is made or has failed.
# Returns its channel, or nothing when it can't be begun.
proc session::connect {host port} {
    if {[catch {socket -async $host $port} channel]} return
    set session::output($channel) ""
    fileevent $channel writable "fileevent $channel writable {}; lappend session::ended $channel"
    return $channel
}

# What a tool has written so far.
proc session::written {channel} {
    variable output
    return [encoding convertfrom [encoding system] $output($channel)]
}

# Waits for the next tool to end and returns its channel, or nothing when none does in time.
proc session::next_ended {milliseconds} {
    variable ended
    if {$ended eq {}} {
        set timer [after $milliseconds {lappend session::ended ""}]
        vwait session::ended
        after cancel $timer
    }
    set ended [lassign $ended channel]
    return $channel
}

# The exit status of a tool that has ended, 128 when a signal ended it, and what it wrote. A
# connection that failed has the status 1.
proc session::result {channel} {
    variable output
    set text [written $channel]
    unset output($channel)
    set status [expr {[pid $channel] eq "" && [fconfigure $channel -error] ne ""}]
    fconfigure $channel -blocking 1
    if {[catch {close $channel} message options]} {
        set code [dict get $options -errorcode]
        set status [expr {[lindex $code 0] eq "CHILDSTATUS" ? [lindex $code 2] : 128}]
    }
    return [list $status $text]
}

# Ends all tools and connections that there still are.
proc session::stop_all {} {
    variable output; variable ended {}
    foreach channel [array names output] {
        catch {exec kill -9 {*}[pid $channel]}
        close $channel
    }
    array unset output
}

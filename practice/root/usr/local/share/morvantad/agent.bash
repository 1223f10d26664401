# shellcheck shell=bash
# What the agent's tools and the system's directory plug-in share: signing in with a private ticket, and
# finding and changing the directory's entries. Every step has a time limit, so that a controller that
# stops answering ends a tool with a sentence.

step_limit=10 # seconds

fail() {
    echo "$*"
    exit 1
}

limited() {
    timeout --kill-after=1 "$step_limit" "$@"
}

# A private place for the ticket of this run, removed at its end.
begin_session() {
    umask 077
    session=$(mktemp -d)
    trap 'rm -rf "$session"' EXIT
    export KRB5CCNAME=FILE:$session/ticket LDAPSASL_NOCANON=on LC_ALL=C.UTF-8
}

# sign_in DOMAIN USER PASSWORD [SERVER]: gets a ticket from the server, or from the first controller
# that answers, and sets `controller` to its name.
sign_in() {
    controller=$(/usr/local/share/morvantad/libexec/sign_in "$session" "$1" "$2" "${4-}" <<<"$3" 2>&1) ||
        fail "${controller%%$'\n'*}"
    export KRB5_CONFIG=$session/krb5.conf
}

base_of() { # example.test -> DC=example,DC=test
    echo "DC=${1//./,DC=}"
}

ldap() { # ldapsearch|ldapmodify|ldapmodrdn ARGUMENT...
    local tool=$1
    shift
    limited "$tool" -Q -Y GSSAPI -O minssf=1 -o nettimeout="$step_limit" -H "ldap://$controller" "$@"
}

# find_name BASE SCOPE FILTER: sets `found` to the distinguished name of the first entry, or empty.
find_name() {
    local answer status=0
    answer=$(ldap ldapsearch -LLL -o ldif-wrap=no -b "$1" -s "$2" "$3" 1.1 2>"$session/complaint") ||
        status=$?
    case $status in
    0 | 32 | 34) ;; # searched, no such base, not a distinguished name
    *) fail "The domain controller $controller did not answer. $(tail -n 1 "$session/complaint")" ;;
    esac
    found=$(sed -n '/^dn:/{p;q}' <<<"$answer")
    if [[ $found == "dn:: "* ]]; then
        found=$(base64 -d <<<"${found#dn:: }")
    fi
    found=${found#dn: }
}

filter_value() { # escaped for a search filter
    local value=${1//\\/\\5c}
    value=${value//\*/\\2a}
    value=${value//\(/\\28}
    echo "${value//\)/\\29}"
}

find_computer() { # DOMAIN NAME: sets `found` as find_name does
    find_name "$(base_of "$1")" sub "(&(objectClass=computer)(sAMAccountName=$(filter_value "$2")\$))"
}

# add_computer DOMAIN NAME KEYTAB [ADCLI-OPTION...]
add_computer() {
    local domain=$1 name=$2 keytab=$3 output
    shift 3
    output=$(limited adcli join --domain="$domain" --domain-controller="$controller" \
        --login-ccache="$session/ticket" --computer-name="$name" \
        --host-fqdn="${name,,}.$domain" --host-keytab="$keytab" --os-name=macOS "$@" 2>&1) ||
        fail "The computer account $name could not be made. ${output:-The controller stopped answering.}"
}

# remove_computer DOMAIN NAME
remove_computer() {
    local output
    output=$(limited adcli delete-computer --domain="$1" --domain-controller="$controller" \
        --login-ccache="$session/ticket" "$2" 2>&1) ||
        fail "The computer account $2 could not be removed. ${output:-The controller stopped answering.}"
}

# disable_computer DISTINGUISHED-NAME
disable_computer() {
    local output flags
    output=$(ldap ldapsearch -LLL -b "$1" -s base userAccountControl 2>&1) ||
        fail "The computer account $1 could not be disabled. ${output:-The controller stopped answering.}"
    flags=$(sed -n 's/^userAccountControl: //p' <<<"$output")
    [[ -n $flags ]] ||
        fail "The computer account $1 could not be disabled. You may not read its userAccountControl."
    output=$(ldap ldapmodify 2>&1 <<END
dn:: $(printf %s "$1" | base64 -w 0)
changetype: modify
replace: userAccountControl
userAccountControl: $((flags | 2))
END
    ) || fail "The computer account $1 could not be disabled. ${output:-The controller stopped answering.}"
}

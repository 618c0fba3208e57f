#!/usr/bin/env bash
# Makes the certificates of the tests, in a directory that it replaces: make_certificates.sh OPENSSL DIRECTORY. NAME.pem contains a certificate
# and its private key. They are worthless: anyone can make the same.
set -euo pipefail

openssl=$1 directory=$2
rm -rf "$directory"
mkdir "$directory"
cd "$directory"
exec 3>&2 2>log
trap '[[ $? -eq 0 ]] || cat log >&3' EXIT

: >index
echo 01 >serial
cat >config <<'END'
[ca]
default_ca = authority
[authority]
database = index
serial = serial
new_certs_dir = .
default_md = sha256
policy = any
unique_subject = no
copy_extensions = none
[any]
commonName = supplied
[req]
distinguished_name = name
[name]
[root]
basicConstraints = critical, CA:TRUE
[localhost]
subjectAltName = DNS:localhost, IP:127.0.0.1, IP:::1
[other_name]
subjectAltName = DNS:a.example, DNS:*.b.example
[other_address]
subjectAltName = IP:192.0.2.1, IP:2001:db8::1
[no_name]
[client]
subjectAltName = DNS:localhost
extendedKeyUsage = clientAuth
END

root() { # NAME COMMON_NAME
    "$openssl" req -config config -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout "$1.key" -out "$1.crt" \
        -subj "/CN=$2" -days 3650 -extensions root
}

certificate() { # NAME AUTHORITY EXTENSIONS COMMON_NAME [START END [KEY_OPTION...]]
    local key=(-newkey ec -pkeyopt ec_paramgen_curve:P-256)
    [[ $# -le 6 ]] || key=("${@:7}")
    "$openssl" req -config config -new "${key[@]}" -nodes -keyout "$1.key" -out "$1.csr" -subj "/CN=$4"
    "$openssl" ca -config config -batch -notext -in "$1.csr" -out "$1.crt" -cert "$2.crt" -keyfile "$2.key" -extensions "$3" \
        -startdate "${5:-20200101000000Z}" -enddate "${6:-20491231235959Z}"
    cat "$1.crt" "$1.key" >"$1.pem"
}

root ca "Test CA"
root unknown_ca "Unknown CA"
"$openssl" req -config config -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout self_signed.key -out self_signed.crt \
    -subj "/CN=localhost" -days 3650 -extensions localhost
cat self_signed.crt self_signed.key >self_signed.pem
certificate localhost ca localhost localhost
certificate expired ca localhost localhost 20200101000000Z 20200201000000Z
certificate ends_soon ca localhost localhost 20200101000000Z "$(date -u -d '5 days' +%Y%m%d%H%M%SZ)"
certificate not_yet_valid ca localhost localhost 20490101000000Z 20491231235959Z
certificate other_name ca other_name ignored.example
certificate other_address ca other_address 192.0.2.1
certificate unprintable ca no_name $'evil\nname'
certificate wrong_purpose ca client localhost
certificate unknown_issuer unknown_ca localhost localhost
certificate weak_key ca localhost localhost '' '' -newkey rsa:1024
certificate agent ca client agent
"$openssl" pkey -in agent.key -aes128 -passout pass:secret -out encrypted.key
mkdir hashed
cp ca.crt hashed
"$openssl" rehash hashed

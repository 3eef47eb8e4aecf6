# The database, its tables and the program's account on a server: the one place that says which rights the program has.

readonly account=tamsora
readonly account_rights='SELECT, INSERT, UPDATE, DELETE, LOCK TABLES, CREATE, DROP'

create_database_sql() {
    printf 'CREATE DATABASE IF NOT EXISTS posdb CHARACTER SET utf8mb4;\n'
}

# Makes the account unless it is there already (HOSTS PASSWORD); an existing one keeps its password.
create_account_sql() {
    printf "CREATE USER IF NOT EXISTS '%s'@'%s' IDENTIFIED BY '%s';\n" "$account" "$1" "$2"
}

change_password_sql() {
    printf "ALTER USER '%s'@'%s' IDENTIFIED BY '%s';\n" "$account" "$1" "$2"
}

# CREATE is for the tables of a further counter, DROP for emptying a counter's clipboard (HOSTS).
grant_sql() {
    printf "GRANT %s ON posdb.* TO '%s'@'%s';\n" "$account_rights" "$account" "$1"
}

# The report server's account, which can change nothing.
readonly reports_account=tamsora_reports

create_reports_account_sql() {
    printf "CREATE USER IF NOT EXISTS '%s'@'%s' IDENTIFIED BY '%s';\n" "$reports_account" "$1" "$2"
}

change_reports_password_sql() {
    printf "ALTER USER '%s'@'%s' IDENTIFIED BY '%s';\n" "$reports_account" "$1" "$2"
}

reports_grant_sql() {
    printf "GRANT SELECT ON posdb.* TO '%s'@'%s';\n" "$reports_account" "$1"
}

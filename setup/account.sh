# The database and the accounts on a server: the one place that says which rights the program and its backup have.

readonly account=tamsora
readonly account_rights='SELECT, INSERT, UPDATE, DELETE, LOCK TABLES, CREATE, DROP'
readonly backup_account=tamsora_backup

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

# The account of the backup, which gets this password in any case (HOSTS PASSWORD).
backup_account_sql() {
    cat <<END
CREATE USER IF NOT EXISTS '$backup_account'@'$1' IDENTIFIED BY '$2';
ALTER USER '$backup_account'@'$1' IDENTIFIED BY '$2';
GRANT SELECT, LOCK TABLES, SHOW VIEW, TRIGGER ON posdb.* TO '$backup_account'@'$1';
GRANT INSERT ON posdb.tbl_log TO '$backup_account'@'$1';
GRANT ALL ON \`tamsora\_restored\`.* TO '$backup_account'@'$1';
END
}

# The report server's account, which can change nothing.
readonly reports_account=tamsora_reports

create_reports_account_sql() {
    printf "CREATE USER IF NOT EXISTS '%s'@'%s' IDENTIFIED BY '%s';\n" "$reports_account" "$1" "$2"
}

change_reports_password_sql() {
    printf "ALTER USER '%s'@'%s' IDENTIFIED BY '%s';\n" "$reports_account" "$1" "$2"
}

# Asks for the tables that the reports read: those of each counter that is there, but no staff and no registers.
reports_tables_sql() {
    cat <<'END'
SELECT table_name FROM information_schema.tables WHERE table_schema = 'posdb' AND
    table_name REGEXP '^tbl_(booking|waitlist|log|(counter|shift)[0-9]+)$';
END
}

# The account may read these tables; the right to read all, which it had once, is taken away (HOSTS TABLE...).
reports_grant_sql() {
    local hosts=$1 table
    for table in '*' "${@:2}"; do
        printf "GRANT SELECT ON posdb.%s TO '%s'@'%s';\n" "$table" "$reports_account" "$hosts"
    done
    printf "REVOKE SELECT ON posdb.* FROM '%s'@'%s';\n" "$reports_account" "$hosts"
}

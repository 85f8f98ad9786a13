#include "base/Iso8601.h"
#include "cloud/postgresql/CloudInspection.h"
#include "cloud/postgresql/CloudSchema.h"
#include "cloud/postgresql/PostgresSession.h"
#include "cloud/postgresql/support/PostgresServer.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace quorvane::postgresql {
namespace {

using testing::HasSubstr;
using testing::Not;

/// What an attempt came to: the SQLSTATE of its error, else what it printed.
std::string outcomeOf(const ProgramResult& result) {
    const auto at = result.err.find("ERROR:  ");
    if (at != std::string::npos) return result.err.substr(at + 8, 5);
    return result.out.ends_with('\n') ? result.out.substr(0, result.out.size() - 1) : result.out;
}

/// Alice has private records and shares. Bob is a user as she is, and besides may make things of his own in this
/// database; rita only looks up shares; the stranger may nothing but connect.
class IsolationTest : public testing::Test {
protected:
    IsolationTest() {
        server_.sql("admin", "CREATE SCHEMA bobs AUTHORIZATION bob; GRANT CREATE ON SCHEMA public TO PUBLIC;"
                             "GRANT CREATE ON DATABASE quorvane TO bob");
        server_.sql("alice", R"(
            INSERT INTO quorvane.private_records (record_name, record_type, fields) VALUES
                ('diary', 'ActivityRecord', '{"note": "alices secret"}'),
                ('letter', 'ActivityRecord', '{"note": "alices secret, too"}');
            INSERT INTO quorvane.public_records (record_name, record_type, fields)
            SELECT name, 'ActivityShare', ('{"note": "alices ' || note || '", "isActive": ' || active
                                           || coalesce(', "expiresAt": ' || expiry, '') || '}')::jsonb
            FROM (VALUES ('active', 'share', 'true', NULL),
                         ('lasting', 'share', 'true', '{"$date": "2999-01-01T00:00:00.000000Z"}'),
                         ('soon', 'share', 'true', '{"$date": "' || to_char(timezone('UTC', now()) + '1 hour',
                                                   'YYYY-MM-DD"T"HH24:MI:SS.US"Z"') || '"}'),
                         ('justOver', 'secret', 'true', '{"$date": "' || to_char(timezone('UTC', now()),
                                                        'YYYY-MM-DD"T"HH24:MI:SS.US"Z"') || '"}'),
                         ('expired', 'secret', 'true', '{"$date": "2020-01-01T00:00:00.000000Z"}'),
                         ('noDate', 'secret', 'true', 'null'),
                         ('oddDate', 'secret', 'true', '"2999-01-01T00:00:00.000000Z"'),
                         ('inactive', 'secret', 'false', NULL),
                         ('oddly active', 'secret', '"true"', NULL)) AS v(name, note, active, expiry))");
        server_.sql("owner", R"(INSERT INTO quorvane.public_records (record_name, record_type, fields)
                                VALUES ('config', 'AppConfig', '{"note": "for all"}'); ANALYZE)");
    }

    /// All that alice and the owner have, as it is.
    [[nodiscard]] std::string everything() const {
        std::string all;
        for (const char* table : {"private_records", "public_records"})
            all += server_.sql("admin", fmt::format("SELECT * FROM quorvane.{} WHERE owner IN ('alice', 'owner') "
                                                    "ORDER BY record_name",
                                                    table)) +
                   "\n";
        return all;
    }

    struct Attempt {
        const char* statements;
        std::string outcome;
    };

    /// None of them shows a secret or changes what is not his who makes it.
    void expectOutcomes(const std::string& role, const std::vector<Attempt>& attempts) {
        const std::string before = everything();
        for (const Attempt& attempt : attempts) {
            SCOPED_TRACE(role + ": " + attempt.statements);
            const ProgramResult result = server_.psql(role, attempt.statements);
            EXPECT_EQ(outcomeOf(result), attempt.outcome) << result.err;
            EXPECT_THAT(result.out + result.err, Not(HasSubstr("secret")));
        }
        EXPECT_EQ(everything(), before);
    }

    ConnectionSettings settingsOf(const std::string& role) const {
        return {.service = "",
                .overrides = {{"host", server_.folder().string()},
                              {"port", std::to_string(server_.port())},
                              {"dbname", "quorvane"},
                              {"user", role},
                              {"password", role + "-pw"}}};
    }

    PostgresServer server_;
};

TEST_F(IsolationTest, AUserNeitherSeesNorTouchesThePrivateRecordsOfAnother) {
    expectOutcomes(
        "bob",
        {
            {"TABLE quorvane.private_records", ""},
            {"SELECT count(*) FROM quorvane.private_records WHERE owner = 'alice'", "0"},
            {"SELECT fields FROM ONLY quorvane.private_records WHERE record_name = 'diary'", ""},
            {"UPDATE quorvane.private_records SET fields = '{}' RETURNING fields", ""},
            {"DELETE FROM quorvane.private_records RETURNING fields", ""},
            {"DELETE FROM quorvane.private_records WHERE owner = 'alice' RETURNING *", ""},
            {"UPDATE quorvane.private_records SET owner = 'bob'", "42501"},
            {"UPDATE quorvane.private_records SET record_type = 'x'", "42501"},
            {"INSERT INTO quorvane.private_records (owner, record_name, record_type, fields) VALUES "
             "('alice', 'forged', 'ActivityRecord', '{}')",
             "42501"},
            {"INSERT INTO quorvane.private_records VALUES (DEFAULT, 'forged', 'ActivityRecord', '{}')", "42501"},
            // The same name is another record.
            {"INSERT INTO quorvane.private_records AS t (record_name, record_type, fields) VALUES "
             "('diary', 'ActivityRecord', '{}') ON CONFLICT (owner, record_name) DO UPDATE "
             "SET fields = t.fields || excluded.fields RETURNING owner, fields",
             "bob|{}"},
            {"DELETE FROM quorvane.private_records RETURNING owner, record_name", "bob|diary"},
            {"MERGE INTO quorvane.private_records t USING (VALUES ('diary')) s(n) ON t.record_name = s.n "
             "WHEN MATCHED THEN DELETE",
             ""},
            {"COPY quorvane.private_records TO STDOUT", ""},
            {"COPY (SELECT * FROM quorvane.private_records) TO STDOUT", ""},
            {"COPY quorvane.private_records (record_name, record_type, fields) FROM STDIN", "0A000"},
            {"COPY quorvane.private_records TO PROGRAM 'cat'", "42501"},
            {"COPY quorvane.private_records TO '/tmp/quorvane-stolen'", "42501"},
            {"TRUNCATE quorvane.private_records", "42501"},
            {"SELECT fields FROM quorvane.private_records FOR UPDATE", ""},
            {"BEGIN; DECLARE c SCROLL CURSOR WITH HOLD FOR TABLE quorvane.private_records; FETCH ALL c; COMMIT;"
             "FETCH BACKWARD ALL c",
             ""},
            {"PREPARE p AS TABLE quorvane.private_records; SET ROLE quorvane_user; EXECUTE p; RESET ROLE; EXECUTE p",
             ""},
            {"SET ROLE quorvane_user; TABLE quorvane.private_records", ""},
            {"SET ROLE quorvane_user; DELETE FROM quorvane.private_records RETURNING fields", ""},
            {"SET row_security = off; TABLE quorvane.private_records", "42501"},
            {"CREATE TABLE bobs.copy AS TABLE quorvane.private_records; TABLE bobs.copy", ""},
            {"SELECT query_to_xml('TABLE quorvane.private_records', false, true, '')", ""},
        });
}

TEST_F(IsolationTest, FunctionsViewsAndPlansOfAUserMeetHisOwnRowsAlone) {
    server_.sql("bob", R"(
        CREATE FUNCTION bobs.tell(jsonb) RETURNS boolean LANGUAGE plpgsql COST 0.0000001 AS
            $$ BEGIN RAISE NOTICE 'seen: %', $1; RETURN true; END $$;
        CREATE OPERATOR bobs.### (FUNCTION = bobs.tell, RIGHTARG = jsonb);
        CREATE VIEW bobs.view AS SELECT * FROM quorvane.private_records WHERE bobs.tell(fields);
        CREATE FUNCTION bobs.mine() RETURNS SETOF jsonb LANGUAGE sql SECURITY DEFINER AS
            'SELECT fields FROM quorvane.private_records';
        GRANT USAGE ON SCHEMA bobs TO PUBLIC; GRANT SELECT ON bobs.view TO PUBLIC;)");
    expectOutcomes(
        "bob",
        {
            {"SELECT count(*) FROM quorvane.private_records WHERE bobs.tell(fields)", "0"},
            {"SELECT count(*) FROM quorvane.private_records WHERE OPERATOR(bobs.###) fields", "0"},
            {"SELECT count(*) FROM quorvane.public_records WHERE record_name IN ('inactive', 'expired') "
             "AND bobs.tell(fields)",
             "0"},
            {"SELECT 1 / (length(fields::text) - length(fields::text)) FROM quorvane.private_records", ""},
            {"SELECT (fields ->> 'note')::int FROM quorvane.private_records", ""},
            {"SELECT count(*) FROM bobs.view", "0"},
            {"SELECT count(*) FROM bobs.mine()", "0"},
            {"DO $$ DECLARE r record; BEGIN FOR r IN TABLE quorvane.private_records LOOP RAISE NOTICE '%', r; "
             "END LOOP; END $$",
             ""},
            {"SET enable_indexscan = off; SET enable_bitmapscan = off; CREATE TEMP TABLE plan (line text); "
             "DO $$ DECLARE l text; BEGIN FOR l IN EXPLAIN (ANALYZE, VERBOSE) SELECT * FROM quorvane.private_records "
             "WHERE fields::text LIKE '%a%' LOOP INSERT INTO plan VALUES (l); END LOOP; END $$; "
             "SELECT count(*) FROM plan WHERE line LIKE '%diary%' OR line LIKE '%note%'",
             "0"},
            {"SELECT count(*) FROM pg_stats WHERE schemaname = 'quorvane'", "0"},
            {"SELECT count(*) FROM pg_statistic", "42501"},
            {"CREATE TEMP TABLE private_records (LIKE quorvane.private_records); "
             "CREATE FUNCTION pg_temp.spy() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RAISE NOTICE ''%'', NEW; "
             "RETURN NEW; END'; CREATE TRIGGER spy BEFORE INSERT ON private_records FOR EACH ROW EXECUTE FUNCTION "
             "pg_temp.spy(); INSERT INTO private_records TABLE quorvane.private_records; TABLE private_records",
             ""},
            {"CREATE MATERIALIZED VIEW bobs.kept AS TABLE quorvane.private_records; TABLE bobs.kept", ""},
        });
    // Who looks into somebody else's view sees his own rows, and may not call what is not granted.
    EXPECT_EQ(server_.sql("alice", "SELECT record_name FROM bobs.view ORDER BY 1"), "diary\nletter");
}

TEST_F(IsolationTest, NobodyWidensHisRights) {
    const CancelToken token;
    const PostgresConnection alice(settingsOf("alice"), token);  // somebody to watch and to disturb
    expectOutcomes(
        "bob",
        {
            {"SET ROLE alice", "42501"},
            {"SET ROLE owner", "42501"},
            {"SET SESSION AUTHORIZATION alice", "42501"},
            {"GRANT alice TO bob", "42501"},
            {"GRANT quorvane_user TO stranger", "42501"},
            {"GRANT SELECT ON quorvane.private_records TO stranger; SELECT has_table_privilege('stranger', "
             "'quorvane.private_records', 'SELECT')",
             "f"},
            {"ALTER ROLE bob BYPASSRLS", "42501"},
            {"ALTER ROLE alice PASSWORD 'x'", "42501"},
            {"ALTER ROLE alice SET search_path = bobs", "42501"},
            {"ALTER DATABASE quorvane SET search_path = bobs", "42501"},
            {"ALTER TABLE quorvane.private_records DISABLE ROW LEVEL SECURITY", "42501"},
            {"ALTER TABLE quorvane.private_records OWNER TO bob", "42501"},
            {"CREATE POLICY all_rows ON quorvane.private_records USING (true)", "42501"},
            {"DROP POLICY own ON quorvane.private_records", "42501"},
            {"CREATE TRIGGER spy BEFORE INSERT ON quorvane.private_records FOR EACH ROW "
             "EXECUTE FUNCTION suppress_redundant_updates_trigger()",
             "42501"},
            {"CREATE RULE spy AS ON INSERT TO quorvane.private_records DO ALSO NOTHING", "42501"},
            {"CREATE INDEX ON quorvane.private_records (fields)", "42501"},
            {"CREATE STATISTICS bobs.s ON owner, record_name FROM quorvane.private_records", "42501"},
            {"CREATE TABLE bobs.child () INHERITS (quorvane.private_records)", "42501"},
            {"CREATE TABLE bobs.part PARTITION OF quorvane.private_records DEFAULT", "42501"},
            {"CREATE TABLE bobs.probe (n text REFERENCES quorvane.public_records)", "42501"},
            {"CREATE PUBLICATION all_rows FOR TABLE quorvane.private_records", "42501"},
            {"CREATE TABLE quorvane.mine ()", "42501"},
            {"CREATE OR REPLACE FUNCTION quorvane.touch() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN END'", "42501"},
            {"CREATE OR REPLACE FUNCTION quorvane.version() RETURNS int LANGUAGE sql AS 'SELECT 9'", "42501"},
            {"ALTER FUNCTION quorvane.touch() SECURITY DEFINER", "42501"},
            {"SELECT quorvane.touch()", "42501"},
            {"DROP SCHEMA quorvane CASCADE", "42501"},
            {"DROP TABLE quorvane.private_records", "42501"},
            {"COMMENT ON TABLE quorvane.private_records IS 'x'", "42501"},
            {"CREATE EXTENSION dblink", "42501"},
            {"SELECT pg_create_logical_replication_slot('s', 'test_decoding')", "42501"},
            {"SELECT pg_read_binary_file(pg_relation_filepath('quorvane.private_records'))", "42501"},
            {"SELECT lo_import('/etc/hostname')", "42501"},
            {"SELECT count(*) FROM pg_largeobject_metadata", "0"},
            {"SELECT count(*) FROM pg_class WHERE relkind = 'S' AND relnamespace = 'quorvane'::regnamespace", "0"},
            {"SELECT DISTINCT query FROM pg_stat_activity WHERE usename = 'alice'", "<insufficient privilege>"},
            {"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE usename = 'alice'", "42501"},
            {"SELECT pg_cancel_backend(pid) FROM pg_stat_activity WHERE usename = 'alice'", "42501"},
        });
}

TEST_F(IsolationTest, AShareIsReadWhileItIsActiveAndOnlyItsOwnerChangesIt) {
    const char* all = "SELECT record_name FROM quorvane.public_records ORDER BY 1";
    const std::string forEverybody = "active\nconfig\nlasting\nsoon";
    expectOutcomes(
        "bob",
        {
            {all, forEverybody},
            {"SELECT fields ->> 'note' FROM quorvane.public_records WHERE record_name = 'active'", "alices share"},
            {"TABLE quorvane.public_records", "42501"},
            {"SELECT owner FROM quorvane.public_records", "42501"},
            {"SELECT record_name FROM quorvane.public_records WHERE owner = 'alice'", "42501"},
            {"SELECT record_name FROM quorvane.public_records ORDER BY owner", "42501"},
            {"SELECT t FROM quorvane.public_records t", "42501"},
            {"SELECT to_json(t) FROM quorvane.public_records t", "42501"},
            {"SELECT xmin FROM quorvane.public_records", "42501"},
            {"SELECT record_name FROM quorvane.public_records NATURAL JOIN (VALUES ('alice'::name)) AS v(owner)",
             "42501"},
            {"UPDATE quorvane.public_records SET fields = '{}' WHERE record_name = 'active' RETURNING record_name", ""},
            {"UPDATE quorvane.public_records SET owner = 'bob'", "42501"},
            {"UPDATE quorvane.public_records SET record_type = 'AppConfig'", "42501"},
            {"DELETE FROM quorvane.public_records RETURNING record_name", ""},
            {"MERGE INTO quorvane.public_records t USING (VALUES ('active')) s(n) ON t.record_name = s.n "
             "WHEN MATCHED THEN DELETE",
             "42501"},
            {"SELECT fields FROM quorvane.public_records WHERE record_name = 'active' FOR UPDATE", ""},
            {"COPY quorvane.public_records TO STDOUT", "42501"},
            {"TRUNCATE quorvane.public_records", "42501"},
            {"INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES "
             "('active', 'ActivityShare', '{}') ON CONFLICT (record_name) DO UPDATE SET fields = excluded.fields "
             "RETURNING fields",
             "42501"},
            {"INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES "
             "('inactive', 'ActivityShare', '{}') ON CONFLICT (record_name) DO UPDATE SET fields = excluded.fields "
             "RETURNING fields",
             "42501"},
            {"INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES "
             "('active', 'ActivityShare', '{}') ON CONFLICT DO NOTHING RETURNING fields",
             ""},
            {"INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES "
             "('mine', 'AppConfig', '{}')",
             "42501"},
            {"INSERT INTO quorvane.public_records (owner, record_name, record_type, fields) VALUES "
             "('alice', 'forged', 'ActivityShare', '{}')",
             "42501"},
            {"INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES "
             "('mine', 'ActivityShare', '{\"isActive\": false}') RETURNING record_name",
             "mine"},
            {"UPDATE quorvane.public_records SET fields = '{\"isActive\": true}' RETURNING record_name", "mine"},
            {"DELETE FROM quorvane.public_records RETURNING record_name", "mine"},
        });
    expectOutcomes("rita", {
                               {all, forEverybody},
                               {"SELECT quorvane.version()", "2"},
                               {"TABLE quorvane.private_records", "42501"},
                               {"SELECT count(*) FROM quorvane.private_records", "42501"},
                               {"SELECT owner FROM quorvane.public_records", "42501"},
                               {"INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES "
                                "('hers', 'ActivityShare', '{}')",
                                "42501"},
                               {"INSERT INTO quorvane.private_records (record_name, record_type, fields) VALUES "
                                "('hers', 'ActivityRecord', '{}')",
                                "42501"},
                               {"UPDATE quorvane.public_records SET fields = '{}'", "42501"},
                               {"DELETE FROM quorvane.public_records", "42501"},
                               {"SELECT record_name FROM quorvane.public_records FOR SHARE", "42501"},
                               {"BEGIN; LOCK TABLE quorvane.public_records IN EXCLUSIVE MODE", "42501"},
                               {"SET ROLE quorvane_user", "42501"},
                           });
    expectOutcomes("stranger", {
                                   {"SELECT quorvane.version()", "42501"},
                                   {"TABLE quorvane.private_records", "42501"},
                                   {all, "42501"},
                                   {"SELECT 'quorvane.public_records'::regclass", "42501"},
                                   {"INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES "
                                    "('his', 'ActivityShare', '{}')",
                                    "42501"},
                                   {"DELETE FROM quorvane.public_records", "42501"},
                                   {"SET ROLE quorvane_reader", "42501"},
                               });

    EXPECT_EQ(server_.sql("alice", "SELECT count(*) FROM quorvane.public_records"), "10");
    server_.sql("alice", "UPDATE quorvane.public_records SET fields = fields || '{\"isActive\": false}' WHERE "
                         "record_name = 'active'; DELETE FROM quorvane.public_records WHERE record_name = 'soon'");
    for (const char* role : {"bob", "rita"})
        EXPECT_EQ(server_.sql(role, all), "config\nlasting") << role;
    // A grant that an administrator hands out in a hurry opens no rows.
    server_.sql("owner",
                "GRANT USAGE ON SCHEMA quorvane TO PUBLIC; GRANT ALL ON ALL TABLES IN SCHEMA quorvane TO PUBLIC");
    EXPECT_EQ(server_.sql("stranger", all), "");
    EXPECT_EQ(server_.sql("rita", "TABLE quorvane.private_records"), "");
}

/// Whatever our statements might call, once more in a schema that comes before the system's.
constexpr const char* traps = R"(
    CREATE FUNCTION public.caught() RETURNS void LANGUAGE plpgsql AS $$ BEGIN RAISE EXCEPTION 'caught'; END $$;
    DO $$ DECLARE r record; BEGIN
      FOR r IN SELECT row_number() OVER () AS number, * FROM (VALUES
        ('->', 'jsonb', 'text', 'jsonb'), ('->', 'jsonb', 'jsonb', 'jsonb'), ('->>', 'jsonb', 'text', 'text'),
        ('->>', 'jsonb', 'jsonb', 'text'), ('@>', 'jsonb', 'jsonb', 'bool'), ('||', 'jsonb', 'jsonb', 'jsonb'),
        ('||', 'text', 'text', 'text'), ('=', 'text', 'text', 'bool'), ('=', 'name', 'name', 'bool'),
        ('=', 'name', 'text', 'bool'), ('=', 'oid', 'oid', 'bool'), ('=', 'jsonb', 'jsonb', 'bool'),
        ('<', 'text', 'text', 'bool'), ('<', 'int', 'int', 'bool'), ('>', 'text', 'text', 'bool'),
        ('<>', 'text', 'text', 'bool'), ('=', '"char"', '"char"', 'bool')) AS v(sign, l, r, result) LOOP
        EXECUTE format('CREATE FUNCTION public.trap_%s(%s, %s) RETURNS %s LANGUAGE plpgsql AS $f$ BEGIN '
                       'PERFORM public.caught(); END $f$', r.number, r.l, r.r, r.result);
        EXECUTE format('CREATE OPERATOR public.%s (FUNCTION = public.trap_%s, LEFTARG = %s, RIGHTARG = %s)',
                       r.sign, r.number, r.l, r.r);
      END LOOP;
      FOR r IN SELECT * FROM (VALUES
        ('now()', 'timestamptz'), ('version()', 'int'), ('current_setting(text)', 'text'), ('format(text, text)', 'text'),
        ('has_table_privilege(text, text)', 'bool'), ('has_column_privilege(text, text, text)', 'bool'),
        ('has_schema_privilege(oid, text)', 'bool'), ('pg_has_role(oid, text)', 'bool'), ('to_char(timestamp, text)', 'text'),
        ('to_regprocedure(text)', 'regprocedure'), ('octet_length(text)', 'int'), ('jsonb_typeof(jsonb)', 'text'),
        ('timezone(text, timestamptz)', 'timestamp'), ('count("any")', 'bigint')) AS v(name, result) LOOP
        EXECUTE format('CREATE FUNCTION public.%s RETURNS %s LANGUAGE sql AS $f$ SELECT public.caught(); SELECT NULL::%s '
                       '$f$', replace(r.name, '"any"', 'text'), r.result, r.result);
      END LOOP;
    END $$;
    CREATE FUNCTION public.caught(bigint) RETURNS bigint LANGUAGE sql AS 'SELECT public.caught(); SELECT 1::bigint';
    CREATE AGGREGATE public.count(*) (SFUNC = public.caught, STYPE = bigint, INITCOND = '0');
    CREATE TABLE public.private_records (mine int); CREATE TABLE public.pg_class (mine int);
    CREATE TABLE public.pg_roles (mine int);
    CREATE DOMAIN public.jsonb AS boolean; CREATE DOMAIN public.name AS boolean; CREATE DOMAIN public.text AS boolean;)";

TEST_F(IsolationTest, WhatOthersPutIntoTheSearchPathIsNeverCalled) {
    server_.sql("bob", traps);
    server_.sql("admin", "ALTER DATABASE quorvane SET search_path = public, pg_catalog");
    ASSERT_THAT(server_.psql("alice", "SELECT 'a'::pg_catalog.text = 'a'::pg_catalog.text").err, HasSubstr("caught"));

    using platform::CloudRecord;
    using platform::DatabaseScope;
    PostgresSession session(settingsOf("alice"));
    std::string reason;
    EXPECT_EQ(session.accountStatus(&reason), platform::AccountStatus::available) << reason;
    for (const auto scope : {DatabaseScope::privateData, DatabaseScope::publicData}) {
        const CloudRecord record{.recordType = "ActivityShare",
                                 .recordName = "new",
                                 .values = {{"createdAt", *parseIso8601("2026-03-04T15:00:00Z")}, {"isActive", true}}};
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(session.modify(scope, {record}), (std::vector<platform::SaveResult>{{.recordName = "new"}}));
        EXPECT_EQ(session.record(scope, "new"), record);
        EXPECT_GE(session.count(scope, "ActivityShare"), 1U);
        const auto page =
            session.query(scope, {.recordType = "ActivityShare", .equals = {{"isActive", true}}, .limit = 1});
        ASSERT_EQ(page.rows.size(), 1U);
        EXPECT_EQ(std::get<CloudRecord>(page.rows[0]), record);
        const platform::RecordCursor first{.createdAt = "9999", .recordName = "z"};
        EXPECT_EQ(session.query(scope, {.recordType = "ActivityShare", .limit = 1, .after = first}).rows, page.rows);
        EXPECT_NO_THROW(session.deleteRecord(scope, "new"));
    }
    const CancelToken token;
    PostgresConnection alice(settingsOf("alice"), token);
    EXPECT_THAT(CloudInspection::findings(alice, CloudInspection::describe(alice)), testing::IsEmpty());

    // The owner, too, installs what is meant.
    server_.sql("owner", "DROP SCHEMA quorvane CASCADE");
    PostgresConnection owner(settingsOf("owner"), token);
    EXPECT_EQ(CloudSchema::objection(owner, {"alice"}), std::nullopt);
    EXPECT_EQ(CloudSchema::migrate(owner), 0);
    CloudSchema::addUsers(owner, {"alice"});
    EXPECT_THAT(CloudInspection::findings(alice, CloudInspection::describe(alice)), testing::IsEmpty());
    server_.sql("owner", "DROP SCHEMA quorvane CASCADE");
    server_.sql("owner", CloudSchema::script({"alice"}));
    EXPECT_THAT(CloudInspection::findings(alice, CloudInspection::describe(alice)), testing::IsEmpty());
}

}  // namespace
}  // namespace quorvane::postgresql

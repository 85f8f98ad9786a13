#include "cloud/postgresql/SchemaFacts.h"

#include <fmt/format.h>

namespace quorvane::postgresql::SchemaFacts {
namespace {

/// Its names are those of pg_catalog alone: the transaction sees to that.
constexpr const char* question = R"sql(
WITH space AS (SELECT oid, nspacl, nspowner FROM pg_namespace WHERE nspname = 'quorvane'),
relation AS (
  SELECT c.oid, relname, relkind, relrowsecurity, relowner, relacl,
         CASE relkind WHEN 'r' THEN 'table' WHEN 'i' THEN 'index' WHEN 'v' THEN 'view' WHEN 'S' THEN 'sequence'
                      ELSE 'relation' END AS kind
  FROM pg_class c JOIN space ON relnamespace = space.oid),
permission(owner, object, entries) AS (
  SELECT nspowner, 'SCHEMA quorvane', coalesce(nspacl, acldefault('n', nspowner)) FROM space
  UNION ALL
  SELECT relowner, relname, coalesce(relacl, acldefault(CASE relkind WHEN 'S' THEN 's' ELSE 'r' END::"char", relowner))
  FROM relation WHERE relkind NOT IN ('i', 'c')
  UNION ALL
  SELECT relowner, format('%s (%s)', relname, attname), attacl
  FROM relation JOIN pg_attribute ON attrelid = relation.oid WHERE attacl IS NOT NULL
  UNION ALL
  SELECT proowner, format('FUNCTION %s(%s)', proname, pg_get_function_identity_arguments(p.oid)),
         coalesce(proacl, acldefault('f', proowner))
  FROM pg_proc p JOIN space ON pronamespace = space.oid)

SELECT format('%s %s', kind, relname),
       CASE WHEN relkind = 'r' THEN (SELECT string_agg(attname || ' ' || format_type(atttypid, atttypmod), ', '
                                                       ORDER BY attnum)
                                     FROM pg_attribute WHERE attrelid = relation.oid AND attnum > 0 AND NOT attisdropped)
       END
FROM relation
UNION ALL
SELECT format('row-level security of %s', relname), NULL FROM relation WHERE relrowsecurity
UNION ALL
SELECT format('policy %s of %s', polname, relname),
       format('%s, %s, for %s, using %s, check %s',
              CASE WHEN polpermissive THEN 'permissive' ELSE 'restrictive' END,
              CASE polcmd WHEN 'r' THEN 'select' WHEN 'a' THEN 'insert' WHEN 'w' THEN 'update' WHEN 'd' THEN 'delete'
                          ELSE 'all' END,
              (SELECT string_agg(CASE one WHEN 0 THEN 'PUBLIC' ELSE pg_get_userbyid(one) END, ' ' ORDER BY pg_get_userbyid(one) COLLATE "C")
               FROM unnest(polroles) AS one),
              coalesce(regexp_replace(pg_get_expr(polqual, polrelid), '\s', '', 'g'), 'nothing'),
              coalesce(regexp_replace(pg_get_expr(polwithcheck, polrelid), '\s', '', 'g'), 'nothing'))
FROM pg_policy JOIN relation ON polrelid = relation.oid
UNION ALL
SELECT format('trigger %s of %s', tgname, relname),
       format('calls %s%s', tgfoid::regproc, CASE tgenabled WHEN 'O' THEN '' ELSE ', switched off' END)
FROM pg_trigger JOIN relation ON tgrelid = relation.oid WHERE NOT tgisinternal
UNION ALL
SELECT format('rule %s of %s', rulename, relname), NULL
FROM pg_rewrite JOIN relation ON ev_class = relation.oid WHERE relkind = 'r'
UNION ALL
SELECT format('function %s(%s)', proname, pg_get_function_identity_arguments(p.oid)),
       CASE WHEN prosecdef THEN 'runs as its owner' ELSE 'runs as its caller' END
FROM pg_proc p JOIN space ON pronamespace = space.oid
UNION ALL
SELECT format('GRANT %s ON %s TO %s', privilege_type, object,
              CASE grantee WHEN 0 THEN 'PUBLIC' ELSE pg_get_userbyid(grantee) END),
       CASE WHEN is_grantable THEN 'to hand on, too' END
FROM permission, aclexplode(entries) WHERE grantee <> owner
UNION ALL
SELECT format('role %s', rolname),
       concat_ws(', ', CASE WHEN rolcanlogin THEN 'may log in' END, CASE WHEN rolsuper THEN 'is a superuser' END,
                 CASE WHEN rolbypassrls THEN 'escapes row-level security' END,
                 CASE WHEN EXISTS (SELECT FROM relation WHERE pg_has_role(r.oid, relowner, 'MEMBER'))
                      THEN 'owns the tables' END)
FROM pg_roles r WHERE rolname IN ('quorvane_user', 'quorvane_reader')
)sql";

constexpr const char* columns = "owner name, record_name text, record_type text, fields jsonb, "
                                "created_at timestamp with time zone, modified_at timestamp with time zone, "
                                "sort_key text";
constexpr const char* own = "(owner=CURRENT_USER)";
constexpr const char* ownShare = "((owner=CURRENT_USER)AND(record_type='ActivityShare'::text))";
constexpr const char* ownOrPublic =
    R"(((owner=CURRENT_USER)OR(record_type<>'ActivityShare'::text)OR(((fields->'isActive'::text)='true'::jsonb)AND)"
    R"((((fields->'expiresAt'::text)ISNULL)OR((COALESCE(((fields->'expiresAt'::text)->>'$date'::text),''::text))"
    R"(COLLATE"C")>to_char(timezone('UTC'::text,now()),'YYYY-MM-DD"T"HH24:MI:SS.US"Z"'::text))))))";

/// What both tables have.
void addTable(Facts& facts, const char* table) {
    facts[fmt::format("table {}", table)] = columns;
    for (const char* index : {"pkey", "newest"})
        facts[fmt::format("index {}_{}", table, index)] = "";
    facts[fmt::format("row-level security of {}", table)] = "";
    facts[fmt::format("trigger touch of {}", table)] = "calls quorvane.touch";
    for (const char* right : {"INSERT ON {} (record_name)", "INSERT ON {} (record_type)", "INSERT ON {} (fields)",
                              "UPDATE ON {} (fields)", "DELETE ON {}"})
        facts[fmt::format("GRANT {} TO quorvane_user", fmt::format(fmt::runtime(right), table))] = "";
}

Facts newest() {
    Facts facts;
    addTable(facts, "private_records");
    addTable(facts, "public_records");
    facts["index public_records_owner"] = "";
    facts["GRANT SELECT ON private_records TO quorvane_user"] = "";
    for (const char* role : {"quorvane_user", "quorvane_reader"}) {
        facts[fmt::format("role {}", role)] = "";
        facts[fmt::format("GRANT USAGE ON SCHEMA quorvane TO {}", role)] = "";
        facts[fmt::format("GRANT EXECUTE ON FUNCTION version() TO {}", role)] = "";
        for (const char* column : {"record_name", "record_type", "fields", "created_at", "modified_at", "sort_key"})
            facts[fmt::format("GRANT SELECT ON public_records ({}) TO {}", column, role)] = "";
    }
    for (const char* function : {"touch", "version"})
        facts[fmt::format("function {}()", function)] = "runs as its caller";
    const auto addPolicy = [&](const char* name, const char* rights, const char* usable, const char* checked) {
        facts[fmt::format("policy {}", name)] =
            fmt::format("permissive, {}, using {}, check {}", rights, usable, checked);
    };
    addPolicy("own of private_records", "all, for quorvane_user", own, own);
    addPolicy("visible of public_records", "select, for quorvane_reader quorvane_user", ownOrPublic, "nothing");
    addPolicy("publish of public_records", "insert, for quorvane_user", "nothing", ownShare);
    addPolicy("amend of public_records", "update, for quorvane_user", own, ownShare);
    addPolicy("retract of public_records", "delete, for quorvane_user", ownShare, "nothing");
    return facts;
}

}  // namespace

const Facts& expected() {
    static const Facts facts = newest();
    return facts;
}

Facts read(PostgresConnection& connection) {
    Facts facts;
    connection.executeScript("BEGIN READ ONLY; SET LOCAL search_path = pg_catalog, pg_temp");
    connection.forEachRow(question, {}, [&](const PostgresRow& row) { facts.emplace(row.text(0), row.text(1)); });
    connection.executeScript("COMMIT");
    return facts;
}

std::vector<std::string> differences(const Facts& meant, const Facts& found) {
    std::vector<std::string> lines;
    for (const auto& [thing, how] : meant) {
        const auto other = found.find(thing);
        if (other == found.end())
            lines.push_back(fmt::format("missing: {}", thing));
        else if (other->second != how)
            lines.push_back(fmt::format("changed: {} (now: {})", thing, other->second.empty() ? "-" : other->second));
    }
    for (const auto& [thing, how] : found)
        if (!meant.contains(thing)) lines.push_back(fmt::format("not meant to be there: {}", thing));
    return lines;
}

}  // namespace quorvane::postgresql::SchemaFacts

-- Whatever our statements might call, once more in a schema that comes before the system's.
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
    ('now()', 'timestamptz'), ('unnest(text[])', 'text'),
    ('version()', 'int'), ('current_setting(text)', 'text'), ('format(text, text)', 'text'),
    ('has_table_privilege(text, text)', 'bool'), ('has_column_privilege(text, text, text)', 'bool'),
    ('has_schema_privilege(oid, text)', 'bool'), ('pg_has_role(oid, text)', 'bool'),
    ('to_char(timestamp, text)', 'text'),
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
CREATE DOMAIN public.jsonb AS boolean; CREATE DOMAIN public.name AS boolean; CREATE DOMAIN public.text AS boolean;

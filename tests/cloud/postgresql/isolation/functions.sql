-- Functions, views and plans of a user meet his own rows alone.
-- Each heading names who tries and what comes of it: an SQLSTATE, or what is printed.

-- bob: 0
SELECT count(*) FROM quorvane.private_records WHERE bobs.tell(fields)
SELECT count(*) FROM quorvane.private_records WHERE OPERATOR(bobs.###) fields
SELECT count(*) FROM quorvane.public_records WHERE record_name IN ('inactive', 'expired') AND bobs.tell(fields)
SELECT count(*) FROM bobs.view
SELECT count(*) FROM bobs.mine()
SET enable_indexscan = off; SET enable_bitmapscan = off; CREATE TEMP TABLE plan (line text); DO $$ DECLARE l text;
    BEGIN FOR l IN EXPLAIN (ANALYZE, VERBOSE) SELECT * FROM quorvane.private_records WHERE fields::text LIKE '%a%'
    LOOP INSERT INTO plan VALUES (l); END LOOP; END $$; SELECT count(*) FROM plan WHERE line LIKE '%diary%' OR line
    LIKE '%note%'
SELECT count(*) FROM pg_stats WHERE schemaname = 'quorvane'

-- bob:
SELECT 1 / (length(fields::text) - length(fields::text)) FROM quorvane.private_records
SELECT (fields ->> 'note')::int FROM quorvane.private_records
DO $$ DECLARE r record; BEGIN FOR r IN TABLE quorvane.private_records LOOP RAISE NOTICE '%', r; END LOOP; END $$
CREATE TEMP TABLE private_records (LIKE quorvane.private_records); CREATE FUNCTION pg_temp.spy() RETURNS trigger
    LANGUAGE plpgsql AS 'BEGIN RAISE NOTICE ''%'', NEW; RETURN NEW; END'; CREATE TRIGGER spy BEFORE INSERT ON
    private_records FOR EACH ROW EXECUTE FUNCTION pg_temp.spy(); INSERT INTO private_records TABLE
    quorvane.private_records; TABLE private_records
CREATE MATERIALIZED VIEW bobs.kept AS TABLE quorvane.private_records; TABLE bobs.kept

-- bob: 42501
SELECT count(*) FROM pg_statistic

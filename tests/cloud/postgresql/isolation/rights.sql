-- Nobody widens his rights.
-- Each heading names who tries and what comes of it: an SQLSTATE, or what is printed.

-- bob: 42501
SET ROLE alice
SET ROLE owner
SET SESSION AUTHORIZATION alice
GRANT alice TO bob
GRANT quorvane_user TO stranger
ALTER ROLE bob BYPASSRLS
ALTER ROLE alice PASSWORD 'x'
ALTER ROLE alice SET search_path = bobs
ALTER DATABASE quorvane SET search_path = bobs
ALTER TABLE quorvane.private_records DISABLE ROW LEVEL SECURITY
ALTER TABLE quorvane.private_records OWNER TO bob
CREATE POLICY all_rows ON quorvane.private_records USING (true)
DROP POLICY own ON quorvane.private_records
CREATE TRIGGER spy BEFORE INSERT ON quorvane.private_records FOR EACH ROW EXECUTE FUNCTION
    suppress_redundant_updates_trigger()
CREATE RULE spy AS ON INSERT TO quorvane.private_records DO ALSO NOTHING
CREATE INDEX ON quorvane.private_records (fields)
CREATE STATISTICS bobs.s ON owner, record_name FROM quorvane.private_records
CREATE TABLE bobs.child () INHERITS (quorvane.private_records)
CREATE TABLE bobs.part PARTITION OF quorvane.private_records DEFAULT
CREATE TABLE bobs.probe (n text REFERENCES quorvane.public_records)
CREATE PUBLICATION all_rows FOR TABLE quorvane.private_records
CREATE TABLE quorvane.mine ()
CREATE OR REPLACE FUNCTION quorvane.touch() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN END'
CREATE OR REPLACE FUNCTION quorvane.version() RETURNS int LANGUAGE sql AS 'SELECT 9'
ALTER FUNCTION quorvane.touch() SECURITY DEFINER
SELECT quorvane.touch()
DROP SCHEMA quorvane CASCADE
DROP TABLE quorvane.private_records
COMMENT ON TABLE quorvane.private_records IS 'x'
CREATE EXTENSION dblink
SELECT pg_create_logical_replication_slot('s', 'test_decoding')
SELECT pg_read_binary_file(pg_relation_filepath('quorvane.private_records'))
SELECT lo_import('/etc/hostname')

-- bob: f
GRANT SELECT ON quorvane.private_records TO stranger; SELECT has_table_privilege('stranger',
    'quorvane.private_records', 'SELECT')

-- bob: 0
SELECT count(*) FROM pg_largeobject_metadata
SELECT count(*) FROM pg_class WHERE relkind = 'S' AND relnamespace = 'quorvane'::regnamespace

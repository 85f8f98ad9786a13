-- What an administrator may loosen: the change, how it is taken back, and what the check finds meanwhile; each finding
-- begins so.

ALTER TABLE quorvane.private_records DISABLE ROW LEVEL SECURITY
-- back: ALTER TABLE quorvane.private_records ENABLE ROW LEVEL SECURITY
-- finding: missing: row-level security of private_records

CREATE POLICY everybody ON quorvane.private_records USING (true)
-- back: DROP POLICY everybody ON quorvane.private_records
-- finding: not meant to be there: policy everybody of private_records

ALTER POLICY own ON quorvane.private_records USING (true)
-- back: ALTER POLICY own ON quorvane.private_records USING (owner = current_user)
-- finding: changed: policy own of private_records (now: permissive, all, for quorvane_user, using true

GRANT SELECT ON quorvane.private_records TO PUBLIC
-- back: REVOKE SELECT ON quorvane.private_records FROM PUBLIC
-- finding: not meant to be there: GRANT SELECT ON private_records TO PUBLIC

GRANT SELECT (owner) ON quorvane.public_records TO quorvane_reader
-- back: REVOKE SELECT (owner) ON quorvane.public_records FROM quorvane_reader
-- finding: not meant to be there: GRANT SELECT ON public_records (owner) TO quorvane_reader

GRANT DELETE ON quorvane.private_records TO quorvane_user WITH GRANT OPTION
-- back: REVOKE GRANT OPTION FOR DELETE ON quorvane.private_records FROM quorvane_user
-- finding: changed: GRANT DELETE ON private_records TO quorvane_user (now: to hand on, too)

CREATE VIEW quorvane.everything AS SELECT * FROM quorvane.private_records
-- back: DROP VIEW quorvane.everything
-- finding: not meant to be there: view everything

CREATE FUNCTION quorvane.all_fields() RETURNS SETOF jsonb LANGUAGE sql SECURITY DEFINER AS 'SELECT fields FROM
    quorvane.private_records'
-- back: DROP FUNCTION quorvane.all_fields()
-- finding: not meant to be there: GRANT EXECUTE ON FUNCTION all_fields() TO PUBLIC
-- finding: not meant to be there: function all_fields()

CREATE TRIGGER copy AFTER INSERT ON quorvane.private_records FOR EACH ROW EXECUTE FUNCTION quorvane.touch()
-- back: DROP TRIGGER copy ON quorvane.private_records
-- finding: not meant to be there: trigger copy of private_records

GRANT owner TO quorvane_user
-- back: REVOKE owner FROM quorvane_user
-- finding: the role alice sees everybody's records, because it owns the tables: sync as another one
-- finding: changed: role quorvane_user (now: owns the tables)

DROP INDEX quorvane.private_records_newest
-- back: CREATE INDEX private_records_newest ON quorvane.private_records (owner)
-- finding: missing: index private_records_newest

REVOKE UPDATE (fields) ON quorvane.private_records FROM quorvane_user
-- back: GRANT UPDATE (fields) ON quorvane.private_records TO quorvane_user
-- finding: missing: GRANT UPDATE ON private_records (fields) TO quorvane_user
-- finding: private records can't be written

ALTER ROLE alice SET default_transaction_read_only = on
-- back: ALTER ROLE alice RESET default_transaction_read_only
-- finding: private records can't be written
-- finding: shares can't be written

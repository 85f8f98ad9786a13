-- Quorvane's cloud database, second step: shares, which a user publishes under a token that nobody can guess, and other
-- records that are meant for everybody.
--
-- To be run once by the database's owner, after the first step. A second run fails at CREATE TABLE and changes nothing.

BEGIN;

-- Whatever stands in other schemas of this database must not be taken for what is meant below.
SET LOCAL search_path = pg_catalog, pg_temp;

-- The columns are those of private_records; but the name alone names a record, and one is small, as everybody may read
-- what one user writes.
CREATE TABLE quorvane.public_records (
  owner       name             NOT NULL DEFAULT current_user,
  record_name text COLLATE "C" NOT NULL CHECK (octet_length(record_name) BETWEEN 1 AND 255),
  record_type text COLLATE "C" NOT NULL CHECK (octet_length(record_type) BETWEEN 1 AND 64),
  fields      jsonb            NOT NULL CHECK (jsonb_typeof(fields) = 'object'
                                               AND octet_length(fields::text) <= 65536),
  created_at  timestamptz      NOT NULL DEFAULT now(),
  modified_at timestamptz      NOT NULL DEFAULT now(),
  sort_key    text COLLATE "C" NOT NULL
              GENERATED ALWAYS AS (coalesce(fields -> 'createdAt' ->> '$date', '')) STORED,
  PRIMARY KEY (record_name)
);
CREATE INDEX public_records_newest ON quorvane.public_records
  (record_type, sort_key DESC, record_name DESC);
CREATE INDEX public_records_owner ON quorvane.public_records (owner);
CREATE TRIGGER touch BEFORE UPDATE ON quorvane.public_records FOR EACH ROW EXECUTE FUNCTION quorvane.touch();

ALTER TABLE quorvane.public_records ENABLE ROW LEVEL SECURITY;

-- Others see a share only while it is active and has not expired. An expiry that can't be read counts as one that has
-- passed; a share without one lasts. Records of other types, which only this table's owner writes, are for everybody.
CREATE POLICY visible ON quorvane.public_records FOR SELECT TO quorvane_user, quorvane_reader
  USING (owner = current_user
         OR record_type <> 'ActivityShare'
         OR (fields -> 'isActive' = 'true'
             AND (fields -> 'expiresAt' IS NULL
                  OR coalesce(fields -> 'expiresAt' ->> '$date', '') COLLATE "C"
                     > to_char(timezone('UTC', now()), 'YYYY-MM-DD"T"HH24:MI:SS.US"Z"'))));

-- A user publishes shares and nothing else, and changes and takes back his own.
CREATE POLICY publish ON quorvane.public_records FOR INSERT TO quorvane_user
  WITH CHECK (owner = current_user AND record_type = 'ActivityShare');
CREATE POLICY amend ON quorvane.public_records FOR UPDATE TO quorvane_user
  USING (owner = current_user) WITH CHECK (owner = current_user AND record_type = 'ActivityShare');
CREATE POLICY retract ON quorvane.public_records FOR DELETE TO quorvane_user
  USING (owner = current_user AND record_type = 'ActivityShare');

-- Who published a share is nobody's business: the column can't be read.
REVOKE ALL ON quorvane.public_records FROM PUBLIC, quorvane_user, quorvane_reader;
GRANT SELECT (record_name, record_type, fields, created_at, modified_at, sort_key)
  ON quorvane.public_records TO quorvane_user, quorvane_reader;
GRANT INSERT (record_name, record_type, fields), UPDATE (fields), DELETE
  ON quorvane.public_records TO quorvane_user;

CREATE OR REPLACE FUNCTION quorvane.version() RETURNS integer LANGUAGE sql STABLE AS 'SELECT 2';

COMMENT ON TABLE quorvane.public_records IS 'What users publish, and what is meant for everybody';

COMMIT;

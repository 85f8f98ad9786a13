-- Quorvane's cloud database, first step: who may use it, and the records that each user keeps to himself.
--
-- To be run once by the database's owner, who has to be allowed to create roles where the two below are missing. The
-- owner and superusers see every row, whatever the policies say: nobody should sync as one of them. A user is made by
--     CREATE ROLE alice LOGIN PASSWORD '...' IN ROLE quorvane_user;
-- Rows belong to the name of a role: one that is renamed leaves them behind, and they have to be deleted before the
-- name is given to somebody else. The application itself never creates or alters anything. A second run fails at
-- CREATE SCHEMA and changes nothing.

BEGIN;

-- Whatever stands in other schemas of this database must not be taken for what is meant below.
SET LOCAL search_path = pg_catalog, pg_temp;

-- Roles belong to the whole server, so that another database may have brought them already.
-- quorvane_user: everybody who syncs. quorvane_reader: whoever may read the shares of all users,
-- as the web site does that shows them, and nothing else.
DO $$
DECLARE
  wanted name;
BEGIN
  FOREACH wanted IN ARRAY ARRAY['quorvane_user', 'quorvane_reader']::name[] LOOP
    IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = wanted) THEN
      BEGIN
        EXECUTE format('CREATE ROLE %I NOLOGIN', wanted);
      EXCEPTION WHEN duplicate_object OR unique_violation THEN
        NULL;  -- somebody else was quicker
      END;
    END IF;
  END LOOP;
END $$;

CREATE SCHEMA quorvane;

-- A record of one user. The keys that a record travels with lie in `fields`: text, number, true or false, an array of
-- texts, and a date as {"$date": "2026-03-04T15:00:00.000000Z"}, always in UTC and with six digits, so that the order
-- of the texts is the order in time. `created_at` and `modified_at` are this server's and serve its administrator.
-- `sort_key` is the date of `fields` once more: under row-level security no index on an expression with jsonb's
-- operators may be searched, as these could tell what they are compared with.
CREATE TABLE quorvane.private_records (
  owner       name             NOT NULL DEFAULT current_user,  -- the role that wrote it
  record_name text COLLATE "C" NOT NULL CHECK (octet_length(record_name) BETWEEN 1 AND 255),
  record_type text COLLATE "C" NOT NULL CHECK (octet_length(record_type) BETWEEN 1 AND 64),
  fields      jsonb            NOT NULL CHECK (jsonb_typeof(fields) = 'object'
                                               AND octet_length(fields::text) <= 1048576),
  created_at  timestamptz      NOT NULL DEFAULT now(),
  modified_at timestamptz      NOT NULL DEFAULT now(),
  sort_key    text COLLATE "C" NOT NULL
              GENERATED ALWAYS AS (coalesce(fields -> 'createdAt' ->> '$date', '')) STORED,
  PRIMARY KEY (owner, record_name)
);

-- The newest records of a type, page by page; those without a date come last.
CREATE INDEX private_records_newest ON quorvane.private_records
  (owner, record_type, sort_key DESC, record_name DESC);

-- The number of the last step that was taken. The application refuses to work with another one than its own.
CREATE FUNCTION quorvane.version() RETURNS integer LANGUAGE sql STABLE AS 'SELECT 1';

-- It runs with the rights and the search path of whoever changes a row, hence the schema's name in front.
CREATE FUNCTION quorvane.touch() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
  NEW.modified_at := pg_catalog.now();
  RETURN NEW;
END $$;
CREATE TRIGGER touch BEFORE UPDATE ON quorvane.private_records FOR EACH ROW EXECUTE FUNCTION quorvane.touch();

-- Everybody sees, writes, changes and deletes his own rows, as if there were no others.
ALTER TABLE quorvane.private_records ENABLE ROW LEVEL SECURITY;
CREATE POLICY own ON quorvane.private_records TO quorvane_user
  USING (owner = current_user) WITH CHECK (owner = current_user);

-- First nothing, whatever this database grants by default; then what is needed. Nobody names an owner, or changes one.
REVOKE ALL ON SCHEMA quorvane FROM PUBLIC, quorvane_user, quorvane_reader;
REVOKE ALL ON ALL TABLES IN SCHEMA quorvane FROM PUBLIC, quorvane_user, quorvane_reader;
REVOKE ALL ON ALL FUNCTIONS IN SCHEMA quorvane FROM PUBLIC, quorvane_user, quorvane_reader;
GRANT USAGE ON SCHEMA quorvane TO quorvane_user, quorvane_reader;
GRANT EXECUTE ON FUNCTION quorvane.version() TO quorvane_user, quorvane_reader;
GRANT SELECT, INSERT (record_name, record_type, fields), UPDATE (fields), DELETE
  ON quorvane.private_records TO quorvane_user;

COMMENT ON SCHEMA quorvane IS 'Records of Quorvane, synced by its users';
COMMENT ON TABLE quorvane.private_records IS 'What each user keeps to himself';
COMMENT ON FUNCTION quorvane.version() IS 'Number of the last migration';

COMMIT;

-- A share is read while it is active, and only its owner changes it.
-- Each heading names who tries and what comes of it: an SQLSTATE, or what is printed.

-- bob: active config lasting soon
SELECT record_name FROM quorvane.public_records ORDER BY 1

-- bob: alices share
SELECT fields ->> 'note' FROM quorvane.public_records WHERE record_name = 'active'

-- bob: 42501
TABLE quorvane.public_records
SELECT owner FROM quorvane.public_records
SELECT record_name FROM quorvane.public_records WHERE owner = 'alice'
SELECT record_name FROM quorvane.public_records ORDER BY owner
SELECT t FROM quorvane.public_records t
SELECT to_json(t) FROM quorvane.public_records t
SELECT xmin FROM quorvane.public_records
SELECT record_name FROM quorvane.public_records NATURAL JOIN (VALUES ('alice'::name)) AS v(owner)
UPDATE quorvane.public_records SET owner = 'bob'
UPDATE quorvane.public_records SET record_type = 'AppConfig'
MERGE INTO quorvane.public_records t USING (VALUES ('active')) s(n) ON t.record_name = s.n WHEN MATCHED THEN DELETE
COPY quorvane.public_records TO STDOUT
TRUNCATE quorvane.public_records
INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES ('active', 'ActivityShare', '{}') ON
    CONFLICT (record_name) DO UPDATE SET fields = excluded.fields RETURNING fields
INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES ('inactive', 'ActivityShare', '{}') ON
    CONFLICT (record_name) DO UPDATE SET fields = excluded.fields RETURNING fields
INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES ('mine', 'AppConfig', '{}')
INSERT INTO quorvane.public_records (owner, record_name, record_type, fields) VALUES ('alice', 'forged',
    'ActivityShare', '{}')

-- bob:
UPDATE quorvane.public_records SET fields = '{}' WHERE record_name = 'active' RETURNING record_name
DELETE FROM quorvane.public_records RETURNING record_name
SELECT fields FROM quorvane.public_records WHERE record_name = 'active' FOR UPDATE
INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES ('active', 'ActivityShare', '{}') ON
    CONFLICT DO NOTHING RETURNING fields

-- bob: mine
INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES ('mine', 'ActivityShare',
    '{"isActive": false}') RETURNING record_name
UPDATE quorvane.public_records SET fields = '{"isActive": true}' RETURNING record_name
DELETE FROM quorvane.public_records RETURNING record_name

-- rita: active config lasting soon
SELECT record_name FROM quorvane.public_records ORDER BY 1

-- rita: 2
SELECT quorvane.version()

-- rita: 42501
TABLE quorvane.private_records
SELECT count(*) FROM quorvane.private_records
SELECT owner FROM quorvane.public_records
INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES ('hers', 'ActivityShare', '{}')
INSERT INTO quorvane.private_records (record_name, record_type, fields) VALUES ('hers', 'ActivityRecord', '{}')
UPDATE quorvane.public_records SET fields = '{}'
DELETE FROM quorvane.public_records
SELECT record_name FROM quorvane.public_records FOR SHARE
BEGIN; LOCK TABLE quorvane.public_records IN EXCLUSIVE MODE
SET ROLE quorvane_user

-- stranger: 42501
SELECT quorvane.version()
TABLE quorvane.private_records
SELECT record_name FROM quorvane.public_records ORDER BY 1
SELECT 'quorvane.public_records'::regclass
INSERT INTO quorvane.public_records (record_name, record_type, fields) VALUES ('his', 'ActivityShare', '{}')
DELETE FROM quorvane.public_records
SET ROLE quorvane_reader

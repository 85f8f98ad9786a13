-- A user neither sees nor touches the private records of another.
-- Each heading names who tries and what comes of it: an SQLSTATE, or what is printed.

-- bob:
TABLE quorvane.private_records
SELECT fields FROM ONLY quorvane.private_records WHERE record_name = 'diary'
UPDATE quorvane.private_records SET fields = '{}' RETURNING fields
DELETE FROM quorvane.private_records RETURNING fields
DELETE FROM quorvane.private_records WHERE owner = 'alice' RETURNING *
MERGE INTO quorvane.private_records t USING (VALUES ('diary')) s(n) ON t.record_name = s.n WHEN MATCHED THEN DELETE
COPY quorvane.private_records TO STDOUT
COPY (SELECT * FROM quorvane.private_records) TO STDOUT
SELECT fields FROM quorvane.private_records FOR UPDATE
BEGIN; DECLARE c SCROLL CURSOR WITH HOLD FOR TABLE quorvane.private_records; FETCH ALL c; COMMIT;FETCH BACKWARD ALL
    c
PREPARE p AS TABLE quorvane.private_records; SET ROLE quorvane_user; EXECUTE p; RESET ROLE; EXECUTE p
SET ROLE quorvane_user; TABLE quorvane.private_records
SET ROLE quorvane_user; DELETE FROM quorvane.private_records RETURNING fields
CREATE TABLE bobs.copy AS TABLE quorvane.private_records; TABLE bobs.copy
SELECT query_to_xml('TABLE quorvane.private_records', false, true, '')

-- bob: 0
SELECT count(*) FROM quorvane.private_records WHERE owner = 'alice'

-- bob: 42501
UPDATE quorvane.private_records SET owner = 'bob'
UPDATE quorvane.private_records SET record_type = 'x'
INSERT INTO quorvane.private_records (owner, record_name, record_type, fields) VALUES ('alice', 'forged',
    'ActivityRecord', '{}')
INSERT INTO quorvane.private_records VALUES (DEFAULT, 'forged', 'ActivityRecord', '{}')
COPY quorvane.private_records TO PROGRAM 'cat'
COPY quorvane.private_records TO '/tmp/quorvane-stolen'
TRUNCATE quorvane.private_records
SET row_security = off; TABLE quorvane.private_records

-- bob: bob|{}
INSERT INTO quorvane.private_records AS t (record_name, record_type, fields) VALUES ('diary', 'ActivityRecord',
    '{}') ON CONFLICT (owner, record_name) DO UPDATE SET fields = t.fields || excluded.fields RETURNING owner,
    fields

-- bob: bob|diary
DELETE FROM quorvane.private_records RETURNING owner, record_name

-- bob: 0A000
COPY quorvane.private_records (record_name, record_type, fields) FROM STDIN

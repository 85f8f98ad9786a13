-- What alice has: "secret" is what nobody else may read.
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
             ('oddly active', 'secret', '"true"', NULL)) AS v(name, note, active, expiry);

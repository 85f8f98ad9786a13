-- What bob makes to be told of rows that are not his.
CREATE FUNCTION bobs.tell(jsonb) RETURNS boolean LANGUAGE plpgsql COST 0.0000001 AS
    $$ BEGIN RAISE NOTICE 'seen: %', $1; RETURN true; END $$;
CREATE OPERATOR bobs.### (FUNCTION = bobs.tell, RIGHTARG = jsonb);
CREATE VIEW bobs.view AS SELECT * FROM quorvane.private_records WHERE bobs.tell(fields);
CREATE FUNCTION bobs.mine() RETURNS SETOF jsonb LANGUAGE sql SECURITY DEFINER AS
    'SELECT fields FROM quorvane.private_records';
GRANT USAGE ON SCHEMA bobs TO PUBLIC; GRANT SELECT ON bobs.view TO PUBLIC;

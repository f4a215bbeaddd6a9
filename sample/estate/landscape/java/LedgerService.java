package com.korvane.ledger;
public class LedgerService {
    private Posting [!posting:Posting];
    private Account.Statement [!statement:Statement];
    private String [!adapterName:String] = "com.korvane.legacy.LegacyAdapter";
    public void postAll() {
        [posting].[>post]();  //@ calls Posting.post, ReversalPosting.post via Posting
    }
    public void printStatements() {
        [statement].[>print]();  //@ calls Statement.print, InterimStatement.print via Statement, TaxStatement.print via Statement
    }
    public Object loadAdapter() throws Exception {
        Object [!adapter:Object] = Class.forName([adapterName]).[>newInstance]();  //@ calls LegacyAdapter.adapt uncertain
        return [adapter];
    }
}
